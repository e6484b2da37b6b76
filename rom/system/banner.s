; The banner's first line: the only thing in which the versions differ. VERSION is 22 or 12.
        .globl  banner
        .text
        .if     VERSION == 22
banner: .asciz  "QUOLL BASIC 2.2  "
        .else
banner: .asciz  "QUOLL BASIC 1.2  "
        .endif
