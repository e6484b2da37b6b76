; Texts of the errors, in the extension ROM.
        .include "memory.inc"
        .globl  print_error
        .section .ext,"x"

; The text of error A to the screen. Changes A, B, HL.
print_error:
        ld      hl,errors
        ld      b,a
        jr      error2
error1: ld      a,(hl)
        inc     hl
        or      a
        jr      nz,error1
error2: djnz    error1
error3: ld      a,(hl)
        inc     hl
        or      a
        ret     z
        rst     RST_OUT
        jr      error3

; In the order of their numbers.
errors: .asciz  "Syntax error"
        .asciz  "Overflow"
        .asciz  "Division by zero"
        .asciz  "Illegal quantity"
        .asciz  "Out of memory"
        .asciz  "Type mismatch"
        .asciz  "Bad subscript"
        .asciz  "Array already dimensioned"
        .asciz  "FOR and NEXT don't match"
        .asciz  "RETURN without GOSUB"
        .asciz  "WHILE and WEND don't match"
        .asciz  "Out of data"
        .asciz  "No such line"
        .asciz  "String too long"
        .asciz  "Can't continue"
        .asciz  "Expression too complex"
        .asciz  "Not in direct mode"
        .asciz  "Break"
        .asciz  "Tape error"
        .asciz  "Verify error"
        .asciz  "Wrong kind of file"
        .asciz  "Line too long"
        .asciz  "Undefined function"
        .asciz  "RESUME without error"
        .asciz  "Unprintable error"
