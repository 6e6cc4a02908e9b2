/* The exported surface: a stub and a slot per export, both in the byte order of the names. A stub is one
 * indirect jump through its own slot, padded to 16 bytes, and changes neither arguments nor stack.
 *
 * Each stub and each slot has a section of its own: a linker keeps them in this order, and in a program that
 * takes the static library it can drop those that nothing calls, with the kernels behind them.
 *
 * Where the compiler marks the places that an indirect jump may reach, a stub is marked as well. */

#ifdef __CET__
#include <cet.h>
#else
#define _CET_ENDBR
#endif

#ifdef __x86_64__
#define SLOT .quad
#define SLOT_ALIGNMENT 3
#define JUMP_THROUGH(slot) jmp *slot(%rip)
#else
#define SLOT .long
#define SLOT_ALIGNMENT 2
/* Position independent, and eax is the one register free to hold the address: arguments are on the stack. */
#define JUMP_THROUGH(slot) call programCounterInEax; 99: jmp *slot - 99b(%eax)
#endif

    .section .data.slot, "aw", @progbits
    .p2align SLOT_ALIGNMENT
    .globl EntrySlotTable
    .hidden EntrySlotTable
EntrySlotTable: /* the slots follow, in the order of their stubs */

#define ENTRY(name, argumentBytes) \
    .section .data.slot.name, "aw", @progbits; .p2align SLOT_ALIGNMENT; \
    .hidden name##_body; .Lslot_##name: SLOT name##_body; \
    .section .text.stub.name, "ax", @progbits; .p2align 4; \
    .globl name; .type name, @function; \
    name: .cfi_startproc; _CET_ENDBR; JUMP_THROUGH(.Lslot_##name); .p2align 4, 0xcc; .cfi_endproc; \
    .size name, . - name;
#include "zrfgen_entries.inc"

#ifndef __x86_64__
    .section .text.stub.programCounterInEax, "ax", @progbits
programCounterInEax:
    .cfi_startproc
    movl (%esp), %eax
    ret
    .cfi_endproc
#endif

    .section .note.GNU-stack, "", @progbits
