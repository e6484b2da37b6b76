; Expressions: values, operators by precedence.
;
; DE is the text pointer throughout the interpreter. A value is either a number in FACC, then CF = 1, or a
; string described by SLEN and SADDR, then CF = 0.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  eval, eval_num, eval_str, eval_int, eval_byte, eval_index, facc_int, facc_test
        .globl  num_store, eval_value, eval_done, eval_text, type_error, syntax_error, expr_room, opt_arg, jump_hl
        .text

; The expression at DE, of any type. Changes everything.
eval:   ld      b,TK_OR

; The same as long as operators have at least the token B; B is kept.
eval_value:
        ld      a,(de)
        inc     de
        dec     a
        jp      nz,ev_other

; Numeric variable; names of one letter have a table, others a chain.
        ld      a,(de)
        add     a,a
        jp      nc,ev_long
        inc     de
        ld      l,a
        ld      h,LETTERS >> 8
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        or      h
        jp      z,ev_small              ; a variable not yet there is 0

; Number at HL.
ev_load:
        ld      a,(hl)
        or      a
        jr      nz,ev_real
        inc     hl
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
; Integer HL.
ev_int: xor     a
        ld      (FACC),a
        ld      (FACC + 1),hl
        ld      h,a
        ld      l,a
        ld      (FACC + 3),hl
        ld      (FACC + 5),a

; A number is there: goes on with the operator behind it, or is done.
eval_done:
        ld      a,(de)
        cp      b
        ret     c                       ; most often: less than any operator
        inc     de
        push    bc
        sub     TK_OR
        cp      14
        jp      nc,syntax_error
        ld      c,a
        add     a,a
        add     a,c
        ld      c,a
        ld      b,0
        ld      hl,operators
        add     hl,bc
        ld      b,(hl)                  ; what the right operand takes with it
        inc     hl
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        push    hl                      ; routine
        ld      hl,(FACC + 4)
        push    hl
        ld      hl,(FACC + 2)
        push    hl
        ld      hl,(FACC)
        push    hl
        call    eval_value
        jr      nc,type_error
        ld      hl,0
        add     hl,sp                   ; left operand
        push    de
        ld      bc,ev_back
        push    bc
        ld      bc,6
        ex      de,hl
        ld      h,d
        ld      l,e
        add     hl,bc
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        ex      de,hl
        push    de
        ret                             ; routine with HL = left operand, FACC = right one
ev_back:
        pop     de
        pop     hl
        pop     hl
        pop     hl
        pop     hl
        pop     bc
        jr      eval_done

ev_real:
        push    de
        push    bc
        ld      de,FACC
        ld      bc,6
        ldir
        pop     bc
        pop     de
        jr      eval_done

type_error:
        raise   E_TYPE
syntax_error:
        raise   E_SYNTAX

ev_long:
        push    bc
        ld      c,TK_VNUM
        call    find_var
        pop     bc
        jr      nc,ev_load
        xor     a
; Integer A.
ev_small:
        ld      l,a
        ld      h,0
        jr      ev_int

; A = token - 1.
ev_other:
        cp      TK_SMALL - 1
        jr      c,ev_marker
        sub     TK_SMALL - 1
        cp      11
        jr      c,ev_small
        add     a,TK_SMALL
        jp      m,ev_token              ; 0x80 and above
        cp      '('
        jr      nz,syntax_error
        call    expr_room
        push    bc
        call    eval
        pop     bc
        ld      a,(de)
        inc     de
        jr      nc,ev_bracket
        cp      ')'
        jp      z,eval_done
        jr      syntax_error
ev_bracket:
        cp      ')'
        jr      z,eval_text
        jr      syntax_error

ev_marker:
        cp      TK_INT - 1
        jr      z,ev_word
        jr      c,ev_var
        cp      TK_HEX - 1
        jr      z,ev_word
        ex      de,hl
        jr      nc,syntax_error         ; TK_NUM from here
        push    bc
        ld      de,FACC
        ld      bc,6
        ldir
        pop     bc
        ex      de,hl
        jp      eval_done
ev_word:
        ex      de,hl
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        inc     hl
        ex      de,hl
        jp      ev_int

; A = marker - 1 of a variable or text constant.
ev_var: or      a
        jr      z,syntax_error          ; TK_VNUM was taken above: 0 is the end of the line
        cp      TK_LINE - 1
        jr      z,syntax_error
        cp      TK_TEXT - 1
        jr      z,ev_constant
        inc     a
        ld      c,a
        push    bc
        cp      TK_VSTR
        jr      nz,ev_array
        call    find_var
        pop     bc
        jr      nc,ev_string
        xor     a
        ld      (SLEN),a
        jr      eval_text
ev_array:
        call    expr_room
        call    array_element
        pop     bc
        bit     2,c
        jr      nz,ev_string
        jp      ev_load
; String whose descriptor is at HL.
ev_string:
        ld      a,(hl)
        ld      (SLEN),a
        inc     hl
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        ld      (SADDR),hl
        jr      eval_text
ev_constant:
        ld      a,(de)
        inc     de
        ld      (SLEN),a
        ld      (SADDR),de
        add     a,e
        ld      e,a
        jr      nc,eval_text
        inc     d

; A string is there: the same as eval_done.
eval_text:
        ld      a,(de)
        cp      b
        jr      nc,ev_text1
        or      a
        ret
ev_text1:
        inc     de
        push    bc
        call    str_push
        ld      b,TK_MOD
        cp      TK_PLUS
        jr      z,ev_concat
        sub     TK_LE
        cp      6
        jp      nc,type_error
        push    af
        ld      b,TK_PLUS
        call    eval_value
        jp      c,type_error
        call    str_compare             ; A: what is the case
        pop     bc
        ld      c,b                     ; relation
        ld      b,0
        ld      hl,relations
        add     hl,bc
        pop     bc
        and     (hl)
        jp      z,ev_small
        ld      hl,-1
        jp      ev_int
ev_concat:
        call    eval_value
        jp      c,type_error
        call    str_concat
        pop     bc
        jr      eval_text

; Keywords: signs, NOT, functions. A = token.
ev_token:
        call    expr_room
        cp      TK_MINUS
        jr      z,ev_minus
        cp      TK_PLUS
        jp      z,eval_value
        sub     TK_NOT
        jp      c,syntax_error
        cp      TK_OR - TK_NOT
        jp      nc,syntax_error
        push    bc
        ld      c,a
        ld      b,0
        ld      hl,functions
        add     hl,bc
        add     hl,bc
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        ld      a,c
        cp      TK_LEN - TK_NOT
        jr      nc,ev_function
        jp      (hl)                    ; takes its arguments itself, ends at function_num or function_str

; A function of one value; brackets are not demanded.
ev_function:
        push    hl
        push    bc
        ld      b,0xFF
        call    eval_value
        pop     bc
        ld      a,c
        jr      c,ev_function1
        cp      TK_PEEK - TK_NOT
        jr      nc,ev_type
        jr      ev_function2
ev_function1:
        cp      TK_PEEK - TK_NOT
        jr      c,ev_type
ev_function2:
        pop     hl
        push    de
        cp      TK_CHR - TK_NOT
        jr      nc,ev_function3
        call    jump_hl
        pop     de
        pop     bc
        jp      eval_done
ev_function3:
        call    jump_hl
        pop     de
        pop     bc
        jp      eval_text
ev_type:
        jp      type_error

ev_minus:
        push    bc
        ld      b,TK_POW
        call    eval_value
        jr      nc,ev_type
        push    de
        call    fp_neg
        pop     de
        pop     bc
        jp      eval_done

jump_hl:
        jp      (hl)

; Operators: what the right operand takes with it, routine (HL = left, FACC = right; result in FACC).
operators:
        .byte   TK_AND
        .word   op_or
        .byte   TK_LE
        .word   op_and
        .byte   TK_PLUS
        .word   op_le
        .byte   TK_PLUS
        .word   op_ge
        .byte   TK_PLUS
        .word   op_ne
        .byte   TK_PLUS
        .word   op_eq
        .byte   TK_PLUS
        .word   op_lt
        .byte   TK_PLUS
        .word   op_gt
        .byte   TK_MOD
        .word   fp_add
        .byte   TK_MOD
        .word   fp_sub
        .byte   TK_MUL
        .word   op_mod
        .byte   TK_POW
        .word   fp_mul
        .byte   TK_POW
        .word   fp_div
        .byte   TK_POW + 1
        .word   fp_pow

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
quantity:
        raise   E_QUANTITY

; x MOD y = x - y*INT(x/y): has the sign of y.
op_mod: push    hl
        ld      hl,NUMTEMP
        call    num_store
        pop     hl
        push    hl
        call    fp_div
        call    fp_int
        ld      hl,NUMTEMP
        call    fp_mul
        pop     hl
        jp      fp_sub

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
        jr      facc_int

; A = L = 0 to 255, else error.
eval_byte:
        call    eval_num
        call    facc_int
        ld      a,h
        or      a
        ld      a,l
        ret     z
        jr      quantity

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
        xor     a
        ld      (hl),a
        inc     hl
        ld      (hl),a
        inc     hl
        ld      (hl),a
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

; Room for another level of an expression, else error. Keeps A, BC, DE.
expr_room:
        push    de
        push    af
        ld      hl,(CSP)
        ld      de,EXPR_SPACE
        add     hl,de
        or      a
        sbc     hl,sp
        jr      nc,too_complex
        pop     af
        pop     de
        ret
too_complex:
        raise   E_COMPLEX
