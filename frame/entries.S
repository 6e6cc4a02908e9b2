/* The exported surface: a stub and a slot per export, both in the byte order of the names. A stub is one
 * indirect jump through its own slot, padded to 16 bytes, and changes neither arguments nor stack. */

#ifdef __x86_64__
#define SLOT .quad
#define SLOT_BYTES 8
#define JUMP_THROUGH(offset) jmp *EntrySlotTable + offset(%rip)
#else
#define SLOT .long
#define SLOT_BYTES 4
/* Position independent, and eax is the one register free to hold the address: arguments are on the stack. */
#define JUMP_THROUGH(offset) call programCounterInEax; 99: jmp *EntrySlotTable + offset - 99b(%eax)
#endif

    .data
    .p2align 4
    .hidden EntrySlotTable
    .globl EntrySlotTable
    .type EntrySlotTable, @object
EntrySlotTable:
#define ENTRY(name) .hidden name##_body; SLOT name##_body;
#include "entries.inc"
#undef ENTRY
    .size EntrySlotTable, . - EntrySlotTable

    .text
    .set slotOffset, 0
    .p2align 4
#define ENTRY(name) \
    .globl name; .type name, @function; \
    name: JUMP_THROUGH(slotOffset); .p2align 4, 0xcc; .size name, . - name; \
    .set slotOffset, slotOffset + SLOT_BYTES;
#include "entries.inc"

#ifndef __x86_64__
programCounterInEax:
    movl (%esp), %eax
    ret
#endif

    .section .note.GNU-stack, "", @progbits
