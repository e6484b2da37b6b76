; Expressions: values, operators by precedence.
;
; DE is the text pointer throughout the interpreter. A value is either a number in FACC, then CF = 1, or a
; string described by SLEN and SADDR, then CF = 0.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  word_value
        .globl  eval, eval_value, eval_done, eval_text, ev_mixed, type_error, syntax_error, expr_room, jump_hl
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
        letter_value
        jp      z,ev_small              ; a variable not yet there is 0

; Number at HL.
ev_load:
        ld      a,(hl)
        or      a
        jp      nz,ev_real
        inc     hl
        load_hl
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
        jr      nc,ev_later
ev_operator:
        ld      c,a
        add     a,a
        add     a,c
        ld      c,a
        ld      b,0
        ld      hl,operators
        add     hl,bc
        ld      b,(hl)                  ; what the right operand takes with it
        inc     hl
        ld      c,(hl)
        inc     hl
        ld      a,(FACC)
        or      a
        ld      a,(hl)                  ; A, C: routine
        jr      nz,ev_left_real

; Two integers go a short way; the left one waits as a word.
        ld      hl,(FACC + 1)
        push    hl
        ld      h,a
        ld      l,c
        ld      a,(de)                  ; 0 to 10 on the right, and no operator to go first
        sub     TK_SMALL
        cp      11
        jr      nc,ev_right
        ld      c,a
        inc     de
        ld      a,(de)
        cp      b
        jr      nc,ev_right_back
        ld      b,0
        ld      (FACC + 1),bc
        ex      (sp),hl
        or      a
        ret                             ; as below
ev_right_back:
        dec     de
ev_right:
        push    hl
        call    eval_value
        jp      nc,type_error
        ld      a,(FACC)
        or      a
        jr      nz,ev_right_real
        ld      bc,(FACC + 1)
        pop     hl
        ex      (sp),hl
        ret                             ; HL = left, BC = right, FACC = right, CF = 0

; A later operator, if B lets it through, or the end of the value. A = token - TK_OR.
ev_later:
        sub     TK_XOR - TK_OR
        ld      h,TK_OR
        jr      z,ev_later1
        ld      h,TK_MOD
        jr      c,ev_later2
ev_later1:
        add     a,14
        ld      l,a
        ld      a,h
        cp      b
        ld      a,l
        jr      nc,ev_operator
ev_later2:
        pop     bc
        dec     de
        scf
        ret

; The routine for whole numbers sends what it can't do to the one for all, whose address stands in front of it.
ev_right_real:
        pop     bc
        pop     hl
; HL = left operand, an integer, FACC = right one, BC = routine for integers.
ev_mixed:
        push    de
        push    bc
        ex      de,hl
        ld      hl,LEFTNUM
        ld      (hl),0
        inc     hl
        ld      (hl),e
        inc     hl
        ld      (hl),d
        inc     hl
        ld      (hl),0
        inc     hl
        ld      (hl),0
        inc     hl
        ld      (hl),0
        pop     hl
        ld      de,ev_mixed_back
        push    de
        dec     hl
        ld      d,(hl)
        dec     hl
        ld      e,(hl)
        push    de
        ld      hl,LEFTNUM
        ret
ev_mixed_back:
        pop     de
        pop     bc
        jp      eval_done

ev_left_real:
        ld      hl,(FACC + 4)
        push    hl
        ld      hl,(FACC + 2)
        push    hl
        ld      hl,(FACC)
        push    hl
        ld      h,a
        ld      l,c
        push    hl
        call    eval_value
        jr      nc,type_error
        pop     hl
        dec     hl
        ld      b,(hl)
        dec     hl
        ld      c,(hl)                  ; routine
        ld      hl,0
        add     hl,sp                   ; left operand
        push    de
        ld      de,ev_back
        push    de
        push    bc
        ret                             ; the routine with HL = left operand, FACC = right one
ev_back:
        pop     de
        pop     hl
        pop     hl
        pop     hl
        pop     bc
        jp      eval_done

ev_real:
        push    de
        push    bc
        ld      de,FACC
        ld      bc,6
        ldir
        pop     bc
        pop     de
        jp      eval_done

type_error:
        raise   E_TYPE
syntax_error:
        raise   E_SYNTAX

ev_long:
        push    bc
        ld      c,TK_VNUM
        call    find_var
        pop     bc
        jp      nc,ev_load
        call    skip_name
        xor     a
; Integer A.
ev_small:
        ld      l,a
        ld      h,0
        jp      ev_int

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
        jp      z,eval_text
        jr      syntax_error

ev_marker:
        cp      TK_INT - 1
        jr      z,ev_word
        jr      c,ev_var
        cp      TK_HEX - 1
        jr      z,ev_word
        jr      nc,ev_whole
        ex      de,hl                   ; TK_NUM
        push    bc
        ld      de,FACC
        ld      bc,6
        ldir
        pop     bc
        ex      de,hl
        jp      eval_done
ev_word:
        next_word
        jp      ev_int

; A = marker - 1 of an integer variable or element.
ev_whole:
        inc     a
        ld      c,a
        cp      TK_AINT
        push    bc
        jr      z,ev_whole2
        jp      nc,syntax_error
        call    find_var
        pop     bc
        jr      nc,ev_whole1
        call    skip_name
        xor     a
        jr      ev_small
ev_whole1:
        inc     hl
        jr      ev_whole3
ev_whole2:
        call    expr_room
        call    array_element
        pop     bc
ev_whole3:
        load_hl
        jp      ev_int

; A = marker - 1 of a variable or text constant.
ev_var: or      a
        jp      z,syntax_error          ; TK_VNUM was taken above: 0 is the end of the line
        cp      TK_LINE - 1
        jp      z,syntax_error
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
        call    skip_name
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
        load_hl
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
        cp      TK_DEF
        jr      c,ev_text2
        cp      TK_XOR
        ccf
        ret     nc                      ; a value behind it
        ld      a,TK_OR                 ; XOR goes as late as OR, \ as MOD
        jr      z,ev_text3
        ld      a,TK_MOD
ev_text3:
        cp      b
        jp      nc,type_error
        or      a
        ret
ev_text2:
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
        jp      z,ev_minus
        cp      TK_PLUS
        jp      z,eval_value
        sub     TK_NOT
        jp      c,syntax_error
        cp      TK_OR - TK_NOT
        jr      nc,ev_token2
        push    bc
        ld      c,a
        ld      b,0
        ld      hl,functions
        add     hl,bc
        add     hl,bc
        load_hl
        ld      a,c
        cp      TK_LEN - TK_NOT
        jr      nc,ev_function
        jp      (hl)                    ; takes its arguments itself, ends at function_num or function_str

; Later functions, from FN on; all take their arguments themselves.
ev_token2:
        sub     TK_FN - TK_NOT
        jp      c,syntax_error
        cp      TK_LCASE + 1 - TK_FN
        jp      nc,syntax_error
        push    bc
        ld      c,a
        ld      b,0
        ld      hl,functions2
        add     hl,bc
        add     hl,bc
        load_hl
        jp      (hl)

; PI, IN or TIME (A) may be a variable by now: then its value, for the expression whose B is on the stack. Comes back
; otherwise. Keeps DE.
word_value:
        ld      l,a
        ld      a,(SHADOWS)
        or      a
        ret     z
        ld      a,l
        push    de
        call    word_name
        call    find_var
        pop     de
        ret     c
        pop     bc
        pop     bc
        jp      ev_load

; A function of one value; brackets are not demanded.
ev_function:
        cp      TK_IN - TK_NOT
        jr      z,ev_in
ev_function4:
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
ev_in:  push    hl
        pop     ix
        ld      a,TK_IN
        call    word_value
        push    ix
        pop     hl
        ld      c,TK_IN - TK_NOT
        jr      ev_function4
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
