#include "options.h"

#include <algorithm>
#include <getopt.h>
#include <regex>
#include <stdexcept>

namespace zrfgen::bench {
namespace {

std::vector<std::pair<int, int>> parseLengths(const std::string &list) {
    static const std::regex wholeList("(\\d{1,6}(-\\d{1,6})?)(,\\d{1,6}(-\\d{1,6})?)*"),
        item("(\\d+)(-(\\d+))?");
    if (!std::regex_match(list, wholeList))
        throw std::invalid_argument("--lengths cannot be \"" + list + "\": write it like 8,16 or 2-8,60-64");
    std::vector<std::pair<int, int>> ranges;
    for (std::sregex_iterator match(list.begin(), list.end(), item), end; match != end; ++match) {
        const int first = std::stoi((*match)[1]);
        ranges.emplace_back(first, (*match)[3].matched ? std::stoi((*match)[3]) : first);
    }
    return ranges;
}

const char usage[] =
    "usage: zrfbench [--quick] [--families LIST] [--lengths LIST] [output directory]\n"
    "  --quick          short measurements: a first look, with more noise\n"
    "  --families LIST  only these, such as hartley,dct4; --list names all\n"
    "  --lengths LIST   only these lengths, such as 8,16 or 2-8,60-64;\n"
    "                   of walsh-hadamard and dct4, the orders\n"
    "Writes zrfbench.tsv, .md and .svg to the output directory (default: the current one).\n";

std::string familyNames() {
    std::string names;
    for (const Family &family : families)
        names += family.name + "\n";
    return names;
}

std::vector<Family> parseFamilies(const std::string &list) {
    static const std::regex comma(",");
    std::vector<Family> chosen;
    for (std::sregex_token_iterator name(list.begin(), list.end(), comma, -1), end; name != end; ++name) {
        const auto family = std::ranges::find(families, name->str(), &Family::name);
        if (family == families.end())
            throw std::invalid_argument("no family \"" + name->str() + "\"; zrfbench --list names all");
        chosen.push_back(*family);
    }
    return chosen;
}

} // namespace

bool Options::wants(int length) const {
    return lengthRanges.empty() || std::ranges::any_of(lengthRanges, [=](const auto &range) {
               return range.first <= length && length <= range.second;
           });
}

Options parseOptions(int argc, char **argv) {
    constexpr option known[] = {
        {"help", no_argument, nullptr, 'h'},          {"list", no_argument, nullptr, 'n'},
        {"quick", no_argument, nullptr, 'q'},         {"families", required_argument, nullptr, 'f'},
        {"lengths", required_argument, nullptr, 'l'}, {}};
    opterr = 0; // the message below is ours
    Options options;
    for (int letter; (letter = getopt_long(argc, argv, "h", known, nullptr)) != -1;)
        if (letter == 'h')
            options.answer = usage;
        else if (letter == 'n')
            options.answer = familyNames();
        else if (letter == 'q')
            options.quick = true;
        else if (letter == 'f')
            options.families = parseFamilies(optarg);
        else if (letter == 'l')
            options.lengthRanges = parseLengths(optarg);
        else
            throw std::invalid_argument(std::string("cannot use ") + argv[optind - 1] +
                                        "; see zrfbench --help");
    if (argc - optind > 1)
        throw std::invalid_argument("give one output directory, not " + std::to_string(argc - optind));
    if (optind < argc)
        options.directory = argv[optind];
    return options;
}

} // namespace zrfgen::bench
