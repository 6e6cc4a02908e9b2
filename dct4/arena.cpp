#include "arena.h"

#include <cstring>

namespace zrfgen {
namespace {

std::uint32_t cursorWord(const PlanArena *arena) {
    std::uint32_t word;
    std::memcpy(&word, arena->cursor, sizeof word);
    return word;
}

void setCursorWord(PlanArena *arena, std::uint32_t word) {
    std::memcpy(arena->cursor, &word, sizeof word);
}

// What the cursor counts from.
std::uintptr_t cursorOrigin(const PlanArena *arena) {
    return sizeof(void *) == sizeof arena->cursor ? 0 : reinterpret_cast<std::uintptr_t>(arena);
}

} // namespace

PlanArena *arenaInit(void *block) {
    PlanArena *arena = static_cast<PlanArena *>(block);
    const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(block), unit = planAlign32(1);
    setCursorWord(arena, static_cast<std::uint32_t>(start - cursorOrigin(arena) + 2 * unit - start % unit));
    return arena;
}

void *arenaTake(PlanArena *arena, std::int32_t bytes) {
    const std::uint32_t word = cursorWord(arena);
    setCursorWord(arena, word + static_cast<std::uint32_t>(planAlign32(bytes)));
    return reinterpret_cast<void *>(cursorOrigin(arena) + word);
}

std::int32_t arenaGiveBack(PlanArena *arena, const void *, std::int32_t bytes) {
    setCursorWord(arena, cursorWord(arena) - static_cast<std::uint32_t>(planAlign32(bytes)));
    return planAlign32(bytes);
}

} // namespace zrfgen
