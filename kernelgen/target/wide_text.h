// Text for vectors of 32 bytes and more that differs between widths in the prefix of the intrinsics alone.
#pragma once

#include "target/instruction_set.h"
#include "target/sse3_shuffle.h"

namespace zrfgen::gen::wide {

std::string call(const std::string &function, const std::vector<std::string> &arguments);
// "_mm256_add_ps"
std::string intrinsic(const std::string &name, Type type);

std::string type(Type type);
std::string constant(Type type, const std::vector<Quad> &lanes);
std::string signMask(Type type, const std::vector<Quad> &lanes);
std::string arithmetic(const Node &node, const std::vector<std::string> &operands);
// The same shuffle in each 16 bytes.
std::string shuffleInGroups(Type type, const Shuffle &shuffle, const std::vector<std::string> &operands);

// A value of half the width as the lower half of one of this type, and back; neither costs an instruction.
std::string castUp(Type type, const std::string &value);
std::string castDown(Type type, const std::string &value);

std::string load(Type type, const std::vector<MoveText> &moves);
std::vector<std::string> store(const std::vector<MoveText> &moves, const std::string &value);
// Moves of narrower vectors, which gain nothing by alignment where wider ones do not.
std::vector<MoveText> wholeFromAnywhere(std::vector<MoveText> moves);

} // namespace zrfgen::gen::wide
