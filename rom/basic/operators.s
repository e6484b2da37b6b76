; Operators: one routine for two integers, one for all numbers.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  operators, relations, facc_int, bad_value
        .text

; Operators: what the right operand takes with it, routine for two integers (HL left, BC right; ends at
; int_done or ev_mixed). In front of that stands the address of the one for all numbers (HL = left, FACC = right;
; result in FACC).
operators:
        .byte   TK_AND
        .word   int_or
        .byte   TK_LE
        .word   int_and
        .byte   TK_PLUS
        .word   int_le
        .byte   TK_PLUS
        .word   int_ge
        .byte   TK_PLUS
        .word   int_ne
        .byte   TK_PLUS
        .word   int_eq
        .byte   TK_PLUS
        .word   int_lt
        .byte   TK_PLUS
        .word   int_gt
        .byte   TK_MOD
        .word   int_add
        .byte   TK_MOD
        .word   int_sub
        .byte   TK_MUL
        .word   int_mod
        .byte   TK_POW
        .word   int_mul
        .byte   TK_POW
        .word   int_div
        .byte   TK_POW + 1
        .word   int_pow
        .byte   TK_OR                   ; XOR
        .word   int_xor
        .byte   TK_MUL                  ; \
        .word   int_idiv

        .word   fp_add
int_add:
        adc     hl,bc
        jp      po,int_done
        or      a
        sbc     hl,bc
        ld      bc,int_add
        jp      ev_mixed
        .word   fp_sub
int_sub:
        sbc     hl,bc
        jp      po,int_done
        or      a
        adc     hl,bc
        ld      bc,int_sub
        jp      ev_mixed
        .word   fp_mod
int_mod:
        ld      a,b
        or      c
        jp      z,int_div               ; the error
        push    de
        ld      d,b                     ; signs
        ld      e,h
        bit     7,b
        jr      z,mod1
        negate_word b,c
mod1:   bit     7,h
        call    nz,negate
        push    de
        ex      de,hl
        ld      hl,0
        ld      a,16
mod2:   ex      de,hl
        add     hl,hl
        ex      de,hl
        adc     hl,hl
        sbc     hl,bc
        jr      nc,mod3
        add     hl,bc
mod3:   dec     a
        jr      nz,mod2
        pop     de
        ld      a,h
        or      l
        jr      z,mod5
        ld      a,d
        xor     e
        jp      p,mod4                  ; else up from the next multiple below
        sbc     hl,bc
        call    negate
mod4:   bit     7,d
        call    nz,negate
mod5:   pop     de
        jr      int_done
        .word   fp_mul
int_mul:
        push    bc
        push    hl
        push    de
        ld      a,h
        xor     b
        ld      (NUMTEMP),a             ; sign
        bit     7,h
        call    nz,negate
        ex      de,hl
        ld      h,b
        ld      l,c
        bit     7,h
        call    nz,negate
        ld      a,h                     ; one factor must have one byte
        or      a
        ld      a,l
        jr      z,mul1
        ld      a,d
        or      a
        jr      nz,mul_long
        ld      a,e
        ex      de,hl
mul1:   call    mul_8
        or      a
        jr      nz,mul_long
        bit     7,h
        jr      nz,mul_long
        ld      a,(NUMTEMP)
        rla
        call    c,negate
        pop     de
        pop     bc
        pop     bc
        jr      int_done
mul_long:
        pop     de
        pop     hl
        pop     bc
        ld      bc,int_mul
        jp      ev_mixed
        .word   fp_div
int_div:
        ld      a,b
        or      c
        jr      z,div_zero
        push    de
        call    int_quotient
        pop     de
        pop     bc
        jp      eval_done
div_zero:
        raise   E_DIVISION
        .word   fp_pow
int_pow:
        ld      bc,int_pow
        jp      ev_mixed
        .word   op_idiv
int_idiv:
        ld      bc,int_idiv
        jp      ev_mixed
        .word   op_xor
int_xor:
        ld      a,h
        xor     b
        ld      h,a
        ld      a,l
        xor     c
        ld      l,a
        jr      int_done
        .word   op_or
int_or: ld      a,h
        or      b
        ld      h,a
        ld      a,l
        or      c
        ld      l,a
; The result is the integer HL; all other bytes of FACC are 0 already.
int_done:
        ld      (FACC + 1),hl
        pop     bc
        jp      eval_done
        .word   op_and
int_and:
        ld      a,h
        and     b
        ld      h,a
        ld      a,l
        and     c
        ld      l,a
        jr      int_done

        .word   op_eq
int_eq: sbc     hl,bc
        jr      z,int_true
int_false:
        ld      hl,0
        jr      int_done
        .word   op_ne
int_ne: sbc     hl,bc
        jr      z,int_false
int_true:
        ld      hl,-1
        jr      int_done
        .word   op_gt
int_gt: sbc     hl,bc
        jr      z,int_false
        jr      greater
        .word   op_ge
int_ge: sbc     hl,bc
greater:
        ld      a,h
        jp      po,greater1
        cpl
greater1:
        rla
        jr      nc,int_true
        jr      int_false
        .word   op_le
int_le: sbc     hl,bc
        jr      z,int_true
        jr      less
        .word   op_lt
int_lt: sbc     hl,bc
less:   ld      a,h
        jp      po,less1
        cpl
less1:  rla
        jr      c,int_true
        jr      int_false

; Relations in the order of the tokens: 1 equal, 2 less, 4 greater.
relations:
        .byte   3, 5, 6, 1, 2, 4

op_le:  ld      a,3
        jr      op_relation
op_ge:  ld      a,5
        jr      op_relation
op_ne:  ld      a,6
        jr      op_relation
op_eq:  ld      a,1
        jr      op_relation
op_lt:  ld      a,2
        jr      op_relation
op_gt:  ld      a,4
op_relation:
        push    af
        call    fp_cmp
        pop     bc                      ; B: relations asked for
        ld      a,1
        jr      z,op_case
        ld      a,2
        jr      c,op_case
        ld      a,4
op_case:
        and     b
        ld      hl,0
        jr      z,to_fromint
        dec     hl
to_fromint:
        jp      fp_fromint

; The quotient of both operands rounded to whole numbers, without its fraction.
op_idiv:
        push    hl
        call    idiv_round
        ld      hl,NUMTEMP
        call    num_store
        pop     hl
        call    fp_load
        call    idiv_round
        ld      hl,LEFTNUM
        call    num_store
        ld      hl,NUMTEMP
        call    fp_load
        ld      hl,LEFTNUM
        call    fp_div
        jp      fp_fix
idiv_round:
        ld      hl,half
        call    fp_add
        jp      fp_int

op_xor: call    op_words
        ld      a,h
        xor     d
        ld      h,a
        ld      a,l
        xor     e
        ld      l,a
        jr      to_fromint
op_or:  call    op_words
        ld      a,h
        or      d
        ld      h,a
        ld      a,l
        or      e
        ld      l,a
        jr      to_fromint
op_and: call    op_words
        ld      a,h
        and     d
        ld      h,a
        ld      a,l
        and     e
        ld      l,a
        jr      to_fromint

; Both operands as integers: HL left, DE right.
op_words:
        push    hl
        call    facc_int
        ex      (sp),hl
        call    fp_load
        pop     de
; FACC as a word HL, -32768 to 65535, rounded down; else error. Keeps DE.
facc_int:
        ld      a,(FACC)
        or      a
        ld      hl,(FACC + 1)
        ret     z
        push    de
        call    fp_toaddr
        pop     de
        ret     nc
bad_value:
        raise   E_QUANTITY
