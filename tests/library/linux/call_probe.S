/* std::uintptr_t probeCall(function, arguments, argumentCount): calls the function as the library's callers do,
 * on the stack and with the contents of the registers that callProbe tells, and records there what it leaves. */

#ifdef __x86_64__
#define WORD 8
#define KEPT rbx, rbp, r12, r13, r14, r15
#define KEPT_BACKWARDS r15, r14, r13, r12, rbp, rbx
#define STACK %rsp
#define FUNCTION %rax
#define PROBE(offset) offset + callProbe(%rip)
#else
#define WORD 4
#define KEPT ebx, ebp, esi, edi
#define KEPT_BACKWARDS edi, esi, ebp, ebx
#define STACK %esp
#define FUNCTION %eax
#define PROBE(offset) offset(%ecx)
#endif
/* The members of CallProbe. */
#define CALLER_STACK 0
#define STACK_BEFORE WORD
#define STACK_AFTER 2 * WORD
#define KEPT_BEFORE 3 * WORD
#define KEPT_AFTER 9 * WORD

    .macro findProbe
#ifndef __x86_64__
    call 1f
1:  pop %ecx
    lea callProbe - 1b(%ecx), %ecx
#endif
    .endm

    .text
    .globl probeCall
    .type probeCall, @function
probeCall:
    .irp register, KEPT
    push %\register
    .endr
    findProbe
#ifdef __x86_64__
    mov %rdi, FUNCTION
#else
    mov 20(%esp), FUNCTION
    mov 24(%esp), %esi
    mov 28(%esp), %edi
#endif
    mov STACK, PROBE(CALLER_STACK)
    mov PROBE(STACK_BEFORE), STACK
#ifdef __x86_64__
    mov (%rsi), %rdi
    mov 16(%rsi), %rdx
    mov 24(%rsi), %rcx
    mov 32(%rsi), %r8
    mov 8(%rsi), %rsi
#else
2:  dec %edi
    js 3f
    push (%esi, %edi, 4)
    jmp 2b
3:
#endif
    .set offset, KEPT_BEFORE
    .irp register, KEPT
    mov PROBE(offset), %\register
    .set offset, offset + WORD
    .endr
    call *FUNCTION
    findProbe
    .set offset, KEPT_AFTER
    .irp register, KEPT
    mov %\register, PROBE(offset)
    .set offset, offset + WORD
    .endr
    mov STACK, PROBE(STACK_AFTER)
    mov PROBE(CALLER_STACK), STACK
    .irp register, KEPT_BACKWARDS
    pop %\register
    .endr
    ret
    .size probeCall, . - probeCall

    .section .note.GNU-stack, "", @progbits
