// Where the typed C++ face knows the length, the compiler makes of it what it makes of the plain call.
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace {

// The instructions of each function in the object file, with the names that the linker fills in.
std::map<std::string, std::string> disassembled(const std::string &object) {
    std::map<std::string, std::string> functions;
    const std::string command = ZRFGEN_OBJDUMP " -dr --no-show-raw-insn '" + object + "'";
    std::FILE *pipe = popen(command.c_str(), "r");
    std::string *function = nullptr;
    for (char line[1000]; std::fgets(line, sizeof line, pipe) != nullptr;)
        if (const char *name = std::strchr(line, '<');
            name != nullptr && std::strstr(line, ">:\n") != nullptr)
            function = &functions[std::string(name + 1, std::strcspn(name + 1, ">"))];
        else if (function != nullptr)
            *function += line;
    EXPECT_EQ(pclose(pipe), 0) << command;
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
