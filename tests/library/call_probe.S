/* std::uintptr_t probeCall(function, arguments, argumentCount, stackShift): calls the function as the library's
 * callers do, with known contents in the registers that a callee keeps and with the stack shifted down from a
 * 16-byte boundary, and records what it leaves in them. The layout of callProbe is that of CallProbe. */

#ifdef __x86_64__
#define WORD 8
#else
#define WORD 4
#endif
#define CALLER_STACK 0
#define STACK_BEFORE WORD
#define STACK_AFTER (2 * WORD)
#define KEPT_BEFORE (3 * WORD)
#define KEPT_AFTER (9 * WORD)

    .bss
    .globl callProbe
    .hidden callProbe
    .p2align 4
callProbe:
    .skip 15 * WORD

    .text
    .globl probeCall
    .type probeCall, @function
probeCall:
#ifdef __x86_64__
    .irp register, rbx, rbp, r12, r13, r14, r15
    pushq %\register
    .endr
    movq %rsp, CALLER_STACK + callProbe(%rip)
    andq $-16, %rsp
    subq %rcx, %rsp
    movq %rsp, STACK_BEFORE + callProbe(%rip)
    .set offset, callProbe + KEPT_BEFORE
    .irp register, rbx, rbp, r12, r13, r14, r15
    movq offset(%rip), %\register
    .set offset, offset + WORD
    .endr
    movq %rdi, %rax
    movq 32(%rsi), %r8
    movq 24(%rsi), %rcx
    movq 16(%rsi), %rdx
    movq (%rsi), %rdi
    movq 8(%rsi), %rsi
    call *%rax
    .set offset, callProbe + KEPT_AFTER
    .irp register, rbx, rbp, r12, r13, r14, r15
    movq %\register, offset(%rip)
    .set offset, offset + WORD
    .endr
    movq %rsp, STACK_AFTER + callProbe(%rip)
    movq CALLER_STACK + callProbe(%rip), %rsp
    .irp register, r15, r14, r13, r12, rbp, rbx
    popq %\register
    .endr
    ret
#else
    .irp register, ebx, ebp, esi, edi
    pushl %\register
    .endr
    call 1f
1:  popl %ecx
    leal callProbe - 1b(%ecx), %ecx
    movl 20(%esp), %eax
    movl 24(%esp), %esi
    movl 28(%esp), %edi
    movl 32(%esp), %edx
    movl %esp, CALLER_STACK(%ecx)
    andl $-16, %esp
    subl %edx, %esp
    movl %esp, STACK_BEFORE(%ecx)
2:  decl %edi
    js 3f
    pushl (%esi, %edi, 4)
    jmp 2b
3:  movl KEPT_BEFORE(%ecx), %ebx
    movl KEPT_BEFORE + 4(%ecx), %ebp
    movl KEPT_BEFORE + 8(%ecx), %esi
    movl KEPT_BEFORE + 12(%ecx), %edi
    call *%eax
    call 4f
4:  popl %ecx
    leal callProbe - 4b(%ecx), %ecx
    movl %ebx, KEPT_AFTER(%ecx)
    movl %ebp, KEPT_AFTER + 4(%ecx)
    movl %esi, KEPT_AFTER + 8(%ecx)
    movl %edi, KEPT_AFTER + 12(%ecx)
    movl %esp, STACK_AFTER(%ecx)
    movl CALLER_STACK(%ecx), %esp
    .irp register, edi, esi, ebp, ebx
    popl %\register
    .endr
    ret
#endif
    .size probeCall, . - probeCall

    .section .note.GNU-stack, "", @progbits
