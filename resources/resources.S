// The packed resources, as constant bytes of the library.
// SPDX-License-Identifier: GPL-3.0-or-later
        .section .rodata
        .balign 16
        .globl sivrayResourceBytes
#ifdef __ELF__
        .hidden sivrayResourceBytes
        .type sivrayResourceBytes, @object
#endif
sivrayResourceBytes:
        .incbin "resources.bin"
#ifdef __ELF__
        .size sivrayResourceBytes, . - sivrayResourceBytes
        .section .note.GNU-stack, "", @progbits
#endif
