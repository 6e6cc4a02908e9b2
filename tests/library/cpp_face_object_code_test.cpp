// Where the typed C++ face knows the length, the compiler makes of it what it makes of the plain call.
#include "command.h"

#include <map>

namespace {

// The instructions of each function in the object file, with the names that the linker fills in.
std::map<std::string, std::string> disassembled(const std::string &object) {
    std::map<std::string, std::string> functions;
    std::string *function = nullptr;
    for (const std::string &line : linesOf(ZRFGEN_OBJDUMP " -dr --no-show-raw-insn '" + object + "'"))
        if (const auto name = line.find('<') + 1; line.ends_with(">:"))
            function = &functions[line.substr(name, line.size() - 2 - name)];
        else if (function != nullptr)
            *function += line + "\n";
    return functions;
}

TEST(CppFaceObjectCode, IsThatOfThePlainCall) {
    const auto inC = disassembled(CALLS_IN_C), byFace = disassembled(CALLS_IN_FACE);
    const std::map<std::string, std::string> exports = {{"complexForward", "zrfgDFTFwd_CToC_16_32fc"},
                                                        {"complexInverse", "zrfgDFTInv_CToC_64_64fc"},
                                                        {"realForward", "zrfgDFTFwd_RToCCS_7_64f"},
                                                        {"realInverse", "zrfgDFTInv_PermToR_32_32f"},
                                                        {"hartleyInPlace", "zrfgHartley_3_32f"},
                                                        {"walshHadamard", "zrfgWHT_10_64f"},
                                                        {"differing", "zrfgHartley_8_32f"}};
    for (const auto &[function, name] : exports) {
        SCOPED_TRACE(function);
        ASSERT_TRUE(inC.contains(function) && byFace.contains(function));
        EXPECT_NE(inC.at(function).find(name), std::string::npos);
        if (function == "differing")
            EXPECT_NE(byFace.at(function), inC.at(function)) << "the comparison sees no difference";
        else
            EXPECT_EQ(byFace.at(function), inC.at(function));
    }
}

} // namespace
