// The block of memory that a plan lies in.
#pragma once

#include <cstdint>

namespace zrfgen {

// What the arena charges for bytes: whole units of 32, so that every record and table starts on a boundary.
constexpr std::int32_t planAlign32(std::int32_t bytes) {
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(bytes) + 31) & ~std::uint32_t{31});
}

// What `count` list cells, of 12 bytes each, are charged.
constexpr std::int32_t planCellBytes(std::int32_t count) {
    return count * planAlign32(12);
}

// A reference from one place of the block to another. Every field of a plan is a word of 32 bits, lest sizes
// depend on the machine: where addresses are wider, the word is the target's distance from itself. A copy
// that stood anywhere else might not reach.
template <class T> class Ref {
public:
    Ref() = default;
    Ref(const Ref &) = delete;
    Ref &operator=(const Ref &other) { return *this = static_cast<T *>(other); }
    Ref &operator=(T *target) {
        word = target == nullptr
                   ? 0
                   : static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(target) - origin());
        return *this;
    }
    T *get() const { return word == 0 ? nullptr : reinterpret_cast<T *>(origin() + word); }
    operator T *() const { return get(); }
    T *operator->() const { return get(); }

private:
    std::intptr_t origin() const {
        return sizeof(void *) == sizeof word ? 0 : reinterpret_cast<std::intptr_t>(this);
    }

    std::int32_t word;
};

// The head of the block. Its one word tells the next free byte: the distance from the block's start where
// addresses are wider than the word. It is kept as bytes because the block may start anywhere.
struct PlanArena {
    unsigned char cursor[4];
};

// Sets the cursor to the first place for a record, on a 32-byte boundary 33 to 64 bytes into the block.
PlanArena *arenaInit(void *block);

// Returns the cursor and advances it by planAlign32(bytes). Nothing guards the end of the block.
void *arenaTake(PlanArena *arena, std::int32_t bytes);

// Lowers the cursor by planAlign32(bytes), which is also the result: bookkeeping, after which nothing is
// taken.
std::int32_t arenaGiveBack(PlanArena *arena, const void *released, std::int32_t bytes);

} // namespace zrfgen
