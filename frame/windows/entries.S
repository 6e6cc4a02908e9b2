/* The exported surface, as in frame/entries.S: a stub and a slot per export, both in the byte order of the names, each
 * stub one indirect jump through its own slot, padded to 16 bytes.
 *
 * All stubs share a section and all slots another: the assembler fills every section up to 16 bytes, which would part
 * the slots. So a program that takes the static library has all kernels in it. */

    .data
    .p2align 4
EntrySlotTable: /* the slots follow, in the order of their stubs */

    .text
    .p2align 4

    /* On 32-bit x86 compilers put an underscore before a name and the bytes of the arguments behind it. */
    .macro entry name, argumentBytes
#ifdef __x86_64__
    stub \name, \name\()_body
#else
    stub _\name\()@\argumentBytes, _\name\()_body@\argumentBytes
#endif
    .endm

    .macro stub name, body
    .data
#ifdef __x86_64__
    .quad \body
#else
    .long \body
#endif
    .text
    .globl \name
    .def \name; .scl 2; .type 32; .endef
\name:
#ifdef __x86_64__
    jmp *EntrySlotTable + 8 * slotNumber(%rip)
#else
    jmp *EntrySlotTable + 4 * slotNumber
#endif
    .p2align 4, 0xcc
    .set slotNumber, slotNumber + 1
    .endm

    .set slotNumber, 0
#define ENTRY(name, argumentBytes) entry name, argumentBytes
#include "zrfgen_entries.inc"
