; Values of a kind that a statement or function wants; storing numbers.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  eval_num, eval_str, eval_int, eval_byte, eval_index, opt_arg, facc_test, num_store
        .text

; A number, else type error.
eval_num:
        call    eval
        ret     c
        jp      type_error

; A string, else type error.
eval_str:
        call    eval
        ret     nc
        jp      type_error

; A word: HL = -32768 to 65535, rounded down; else error.
eval_int:
        call    eval_num
        jp      facc_int

; A = L = 0 to 255, else error.
eval_byte:
        call    eval_num
        call    facc_int
        ld      a,h
        or      a
        ld      a,l
        ret     z
        jp      bad_value

; A subscript: HL = 0 to 32767, else error.
eval_index:
        call    eval_num
        ld      a,(FACC)
        or      a
        jr      nz,index1
        ld      hl,(FACC + 1)
        bit     7,h
        ret     z
bad_subscript:
        raise   E_SUBSCRIPT
index1: push    de
        call    fp_toint
        pop     de
        jr      c,bad_subscript
        bit     7,h
        ret     z
        jr      bad_subscript

; An argument in brackets that may be missing: CF = 1 and FACC if there is a number, else CF = 0.
opt_arg:
        ld      a,(de)
        cp      '('
        jr      nz,opt_none
        inc     de
        call    eval
        ld      a,(de)
        inc     de
        jr      c,opt_num
        cp      ')'
        jr      nz,opt_bad
opt_none:
        or      a
        ret
opt_num:
        cp      ')'
        scf
        ret     z
opt_bad:
        jp      syntax_error

; Z when FACC is zero. Changes A, HL.
facc_test:
        ld      a,(FACC)
        ld      hl,(FACC + 1)
        or      h
        or      l
        ret

; Number at HL = FACC. Keeps BC, DE; HL behind it.
num_store:
        ld      a,(FACC)
        ld      (hl),a
        inc     hl
        or      a
        jr      nz,store_real
        ld      a,(FACC + 1)
        ld      (hl),a
        inc     hl
        ld      a,(FACC + 2)
        ld      (hl),a
        inc     hl
        three_zeros
        inc     hl
        ret
store_real:
        push    de
        push    bc
        ex      de,hl
        ld      hl,FACC + 1
        ld      bc,5
        ldir
        ex      de,hl
        pop     bc
        pop     de
        ret
