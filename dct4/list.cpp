#include "list.h"

#include "release.h"

namespace zrfgen {

ListCell *listInit(ListCell *cell, PlanArena *arena) {
    cell->value = nullptr;
    cell->next = nullptr;
    cell->arena = arena;
    return cell;
}

ListCell *listCreate(PlanArena *arena) {
    return listInit(static_cast<ListCell *>(arenaTake(arena, sizeof(ListCell))), arena);
}

NodeHeader *listAppend(ListCell *head, NodeHeader *value) {
    ListCell *last = head;
    while (last->next)
        last = last->next;
    if (last->value) {
        last->next = listCreate(head->arena);
        last = last->next;
    }
    last->value = value;
    return value;
}

void listReleaseCells(ListCell *head) {
    for (ListCell *cell = head->next; cell; cell = cell->next)
        arenaGiveBack(cell->arena, cell, sizeof(ListCell));
}

void listDestroyValues(ListCell *head) {
    for (ListCell *cell = head; cell; cell = cell->next)
        if (NodeHeader *value = cell->value) {
            destroyRecord(value);
            arenaGiveBack(cell->arena, value, value->recordBytes);
        }
}

} // namespace zrfgen
