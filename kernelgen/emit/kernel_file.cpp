#include "emit/kernel_file.h"

#include "emit/emit.h"

#include <utility>

namespace zrfgen::gen {

namespace {

std::string factors(const KernelFile &file, const std::string &real) {
    const std::pair<const char *, Quad> values[] = {
        {"one", 1}, {"byN", Quad(1) / file.length}, {"bySqrtN", 1 / squareRoot(file.length)}};
    std::string result;
    for (const auto &[name, value] : values) {
        const std::string number = literal(value, file.element);
        result += "    alignas(16) static constexpr " + real + " " + name + "[] = {" + number + ", " +
                  number + "};\n";
    }
    return result;
}

} // namespace

std::string text(const KernelFile &file, const std::string &body) {
    const std::string real = file.element == Element::Float32 ? "Float32" : "Float64";
    std::string result =
        "#include \"" + file.head + "\"\n\nnamespace zrfgen {\n\nnamespace {\n\nstruct " + file.type +
        (file.factorsFrom.empty() ? " {\n" + factors(file, real) : " : " + file.factorsFrom + " {\n");
    result += file.members + "\n    template <" + file.transformParameters +
              ">\n    [[gnu::always_inline]] static void transform(const unsigned char *src, unsigned char "
              "*dst, const " +
              real + " *factor) {\n" + body + "    }\n};\n\n} // namespace\n\n";
    for (const KernelFile::Export &exported : file.exports)
        result += "extern \"C\" Status ZRF_CALL ZRF_BODY(" + exported.name + ")(const " + file.arrayElement +
                  " *src, " + file.arrayElement + " *dst, std::int32_t flag" + file.moreParameters +
                  ") {\n    return " + exported.run + "(src, dst, flag);\n}\n\n";
    return result + "} // namespace zrfgen\n";
}

} // namespace zrfgen::gen
