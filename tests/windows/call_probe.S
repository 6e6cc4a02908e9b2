/* std::uintptr_t probeCall(function, arguments, argumentCount): calls the function as the library's callers do,
 * on the stack and with the contents of the registers that callProbe tells, and records there what it leaves. */

/* The members of CallProbe. */
#ifdef __x86_64__
#define WORD 8
#define PROBE(offset) callProbe + offset(%rip)
#define KEPT rbx, rbp, rdi, rsi, r12, r13, r14, r15
#define KEPT_BACKWARDS r15, r14, r13, r12, rsi, rdi, rbp, rbx
#define VECTORS 6, 7, 8, 9, 10, 11, 12, 13, 14, 15
#else
#define WORD 4
#define PROBE(offset) _callProbe + offset
#define KEPT ebx, ebp, esi, edi
#define KEPT_BACKWARDS edi, esi, ebp, ebx
#endif
#define CALLER_STACK 0
#define STACK_BEFORE WORD
#define STACK_AFTER 2 * WORD
#define KEPT_BEFORE (3*WORD)
#define KEPT_AFTER (31*WORD)

    .macro moveKept store, first
    .set offset, \first
    .irp register, KEPT
    .if \store
    mov %\register, PROBE(offset)
    .else
    mov PROBE(offset), %\register
    .endif
    .set offset, offset + WORD
    .endr
#ifdef __x86_64__
    .irp number, VECTORS
    .if \store
    movups %xmm\number, PROBE(offset)
    .else
    movups PROBE(offset), %xmm\number
    .endif
    .set offset, offset + 16
    .endr
#endif
    .endm

    .text
#ifdef __x86_64__
    .globl probeCall
probeCall:
    .irp register, KEPT
    push %\register
    .endr
    sub $168, %rsp
    .irp number, VECTORS
    movups %xmm\number, 16 * (\number - 6)(%rsp)
    .endr
    mov %rcx, %rax
    mov %rdx, %r10
    mov %rsp, PROBE(CALLER_STACK)
    mov PROBE(STACK_BEFORE), %rsp
    sub $48, %rsp /* the callee's own space for four arguments, the fifth, and a gap */
    mov 32(%r10), %r11
    mov %r11, 32(%rsp)
    mov (%r10), %rcx
    mov 8(%r10), %rdx
    mov 16(%r10), %r8
    mov 24(%r10), %r9
    moveKept 0, KEPT_BEFORE
    call *%rax
    moveKept 1, KEPT_AFTER
    add $48, %rsp
    mov %rsp, PROBE(STACK_AFTER)
    mov PROBE(CALLER_STACK), %rsp
    .irp number, VECTORS
    movups 16 * (\number - 6)(%rsp), %xmm\number
    .endr
    add $168, %rsp
#else
    .globl _probeCall
_probeCall:
    .irp register, KEPT
    push %\register
    .endr
    mov 20(%esp), %eax
    mov 24(%esp), %esi
    mov 28(%esp), %edi
    mov %esp, PROBE(CALLER_STACK)
    mov PROBE(STACK_BEFORE), %esp
1:  dec %edi
    js 2f
    push (%esi, %edi, 4)
    jmp 1b
2:  moveKept 0, KEPT_BEFORE
    call *%eax
    moveKept 1, KEPT_AFTER
    mov %esp, PROBE(STACK_AFTER)
    mov PROBE(CALLER_STACK), %esp
#endif
    .irp register, KEPT_BACKWARDS
    pop %\register
    .endr
    ret
