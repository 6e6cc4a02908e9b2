#include "emit/kernel_text.h"

#include <utility>

namespace zrfgen::gen {

namespace {

std::string joined(const std::vector<std::string> &parts) {
    std::string result;
    for (const std::string &part : parts)
        result += (result.empty() ? "" : ", ") + part;
    return result;
}

std::string joined(const std::vector<Parameter> &parameters) {
    std::vector<std::string> parts;
    for (const Parameter &parameter : parameters) {
        const bool isPointer = parameter.type.ends_with('*');
        parts.push_back(parameter.type + (parameter.name.empty() || isPointer ? "" : " ") + parameter.name);
    }
    return joined(parts);
}

std::string factors(const KernelText &kernel) {
    const std::pair<const char *, Quad> values[] = {
        {"one", 1}, {"byN", Quad(1) / kernel.factorsOf}, {"bySqrtN", 1 / squareRoot(kernel.factorsOf)}};
    std::string result;
    for (const auto &[name, value] : values)
        result += "    static constexpr ScaleFactor<Float" + bits(kernel.element) + "> " + name + "{" +
                  literal(value, kernel.element) + "};\n";
    return result;
}

std::string typeText(const KernelText &kernel, const std::string &body, bool hasTwoPaths) {
    std::string result = (kernel.header.empty() ? "template <> struct " : "struct ") + kernel.type +
                         (kernel.base.empty() ? "" : " : " + kernel.base) + " {\n";
    if (kernel.factorsOf > 0)
        result += factors(kernel);
    if (!kernel.exports.empty())
        result += std::string("    static constexpr bool hasTwoPaths = ") + (hasTwoPaths ? "true" : "false") +
                  ";\n";
    if (!kernel.templateParameters.empty())
        result += "    template <" + joined(kernel.templateParameters) + ">\n";
    return result + "    " + (kernel.isAlwaysInline ? "[[gnu::always_inline]] " : "") + "static void " +
           kernel.function + "(" + joined(kernel.parameters) + ") {\n" + body + kernel.lastStatement +
           "    }\n};\n";
}

std::string exportText(const KernelText &kernel, const KernelText::Export &exported) {
    std::vector<Parameter> parameters = {{"const " + kernel.arrayElement + " *", "src"},
                                         {kernel.arrayElement + " *", "dst"},
                                         {"std::int32_t", "flag"}};
    parameters.insert(parameters.end(), kernel.moreParameters.begin(), kernel.moreParameters.end());
    std::vector<std::string> arguments = exported.arguments;
    arguments.insert(arguments.begin(), kernel.type);
    std::string values = "src, dst, flag";
    for (const Parameter &parameter : kernel.moreParameters)
        values += ", " + parameter.name;
    return "extern \"C\" Status ZRF_CALL ZRF_BODY(" + exported.name + ")(" + joined(parameters) +
           ") {\n    return " + exported.head + "<" + joined(arguments) + ">(" + values + ");\n}\n\n";
}

} // namespace

std::vector<Parameter> transformParameters(Element element) {
    return {{"const unsigned char *", "src"},
            {"unsigned char *", "dst"},
            {"[[maybe_unused]] const Float" + bits(element) + " *", "factor"}};
}

std::string text(const KernelText &kernel, const std::string &body, bool hasTwoPaths) {
    const std::string type = typeText(kernel, body, hasTwoPaths);
    if (kernel.header.empty())
        return type;
    std::string result = "#include \"" + kernel.header + "\"\n\nnamespace zrfgen {\n\nnamespace {\n\n" +
                         type + "\n} // namespace\n\n";
    for (const KernelText::Export &exported : kernel.exports)
        result += exportText(kernel, exported);
    return result + kernel.constants + "} // namespace zrfgen\n";
}

} // namespace zrfgen::gen
