// Lists of a plan's records.
#pragma once

#include "arena.h"

namespace zrfgen {

struct NodeHeader;

struct ListCell {
    Ref<NodeHeader> value; // null while the cell is free
    Ref<ListCell> next;    // null at the end
    Ref<PlanArena> arena;
};

static_assert(planAlign32(sizeof(ListCell)) == planCellBytes(1));

// A list is its head cell, which an empty list owns too.
using PlanList = Ref<ListCell>;

// Makes the cell a free one at the end of a list, and returns it.
ListCell *listInit(ListCell *cell, PlanArena *arena);

// Returns an empty list in a cell from the arena.
ListCell *listCreate(PlanArena *arena);

// Stores the value, which must not be null, into the last cell, or into a new one behind it if that is
// taken. Returns the value.
NodeHeader *listAppend(ListCell *head, NodeHeader *value);

// The value at an index, or null if the list has none there. Inline: every transform asks.
inline NodeHeader *listNth(const ListCell *head, std::int32_t index) {
    const ListCell *cell = index < 0 ? nullptr : head;
    for (; cell && index > 0; --index)
        cell = cell->next;
    return cell ? cell->value.get() : nullptr;
}

// Gives back the cells behind the head, and neither the head nor values.
void listReleaseCells(ListCell *head);

// Destroys each value and gives it back. The head may be null.
void listDestroyValues(ListCell *head);

} // namespace zrfgen
