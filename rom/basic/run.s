; Statements one after another; RUN, STOP, CONT, remarks.
;
; A statement's routine is entered with DE behind its keyword and returns with DE at what ends the statement.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  run_next, run_line, run_from, at_end, skip_token, skip_rest, run_syntax
        .globl  skip_statement
        .globl  st_end, st_stop, st_cont, st_run, st_rem, st_data, break_at, run_statement
        .text

; Goes on behind a statement.
run_next:
        ld      a,(de)
        inc     de
        or      a
        jr      z,run_line
        cp      ':'
        jr      nz,run_behind
        ld      a,(BREAKKEY)
        or      a
        jr      z,run_statement
run_break:
        dec     de
        jp      st_stop
run_behind:
        cp      TK_ELSE                 ; the end of what THEN began
        jr      z,run_skip
        cp      TK_QUOTE
        jp      nz,run_syntax
run_skip:
        call    st_rem
        jr      run_next

; The line at DE (its length byte).
run_line:
        ld      hl,BREAKKEY
        ld      a,(TRACE)
        or      (hl)
        jr      nz,run_watch
run_line1:
        ld      a,(de)
        or      a
        jr      z,run_end
        ld      (CURLINE),de
        inc     de
        inc     de
        inc     de

; The statement at DE.
run_statement:
        ld      (STATEMENT),de
        ld      a,(de)
        inc     de
        add     a,a
        jr      nc,run_plain
        ld      hl,statements
        cp      2*(TK_THEN - 0x80)
        jr      nc,run_other
run_word:
        ld      c,a
        ld      b,0
        add     hl,bc
        load_hl
        ld      bc,run_next
        push    bc
        jp      (hl)

; A break key, or TRON: shows the number of the line.
run_watch:
        ld      a,(hl)
        or      a
        jr      nz,run_break
        ld      a,(de)
        or      a
        jr      z,run_end
        push    de
        ld      a,'['
        rst     RST_OUT
        ld      h,d
        ld      l,e
        call    line_out
        ld      a,']'
        rst     RST_OUT
        pop     de
        jr      run_line1

; A later keyword, MID$( that takes something, or a word used as a variable. A = twice the token.
run_other:
        sub     2*(TK_DEF - 0x80)
        jr      c,run_value
        ld      hl,statements2
        cp      2*(TK_USING - TK_DEF)
        jr      c,run_word
run_syntax2:
        jp      syntax_error
run_value:
        add     a,2*(TK_DEF - TK_MID)
        ld      hl,run_next
        push    hl
        jp      z,st_mid
        jp      assign_other

; No keyword: a variable, a blank, or nothing. A = twice the token.
run_plain:
        jr      z,run_empty
        rrca
        cp      TK_SMALL
        jr      nc,run_plain1
        ld      hl,run_next
        push    hl
        jp      st_assign
run_plain1:
        cp      ' '
        jr      z,run_statement
        cp      ':'
        jr      nz,run_syntax2
run_empty:
        dec     de
        jp      run_next

run_syntax:
        jp      syntax_error

; The end of the program, or of a direct line.
run_end:
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        jp      z,ready
st_end: ld      hl,0
        ld      (OLDTEXT),hl
        jp      ready

; STOP, and the break key: CONT goes on from DE.
st_stop:
        call    break_at
        raise   E_BREAK

; What CONT will need: to go on from DE; nothing in direct mode.
break_at:
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        ret     z
        ld      (OLDLINE),hl
        ld      (OLDTEXT),de
        ret

; CONT: behind the statement, or with the one that was broken off.
st_cont:
        ld      hl,(OLDTEXT)
        ld      a,h
        or      l
        jr      z,cont_not
        ex      de,hl
        ld      hl,(OLDLINE)
        ld      (CURLINE),hl
        call    at_end
        ret     z
        pop     hl
        jp      run_statement
cont_not:
        raise   E_CONT

; RUN [line]
st_run: call    clear
        ld      a,(de)
        cp      TK_LINE
        jp      z,st_goto
        call    at_end
        jr      nz,run_syntax
run_from:
        ld      de,(PROGSTART)
        dec     de
        ret

; Remarks, DATA and ELSE have nothing to do.
st_rem: dec     de                      ; seen from the keyword on
; DE to the 0 at the end of the line. Changes A, HL.
skip_rest:
        call    skip_token
        or      a
        jr      nz,skip_rest
        dec     de
        ret
st_data:
        dec     de

; The token at DE: A, and DE behind all that belongs to it. Changes HL.
skip_token:
        ld      a,(de)
        inc     de
        cp      TK_DATA
        jr      nc,skip_text
        cp      TK_SMALL
        ret     nc
        or      a
        ret     z
        cp      TK_TEXT
        jr      c,skip_variable
        cp      TK_VINT
        jr      nc,skip_variable
        cp      TK_TEXT
        ld      hl,1
        jr      z,skip_constant
        inc     hl
        cp      TK_NUM
        jr      nz,skip_bytes
        ld      l,6
skip_bytes:
        add     hl,de
        ex      de,hl
        ret
skip_constant:
        ex      de,hl
        ld      e,(hl)
        ld      d,0
        inc     hl
        add     hl,de
        ex      de,hl
        ret
skip_variable:
        ld      h,a
skip1:  ld      a,(de)
        inc     de
        add     a,a
        jr      nc,skip1
        ld      a,h
        ret
; Texts without tokens: DATA to a colon outside quotes, remarks to the end of the line.
skip_text:
        cp      TK_QUOTE + 1
        ret     nc
        ld      h,a
        ld      l,0
skip2:  ld      a,(de)
        or      a
        jr      z,skip4
        inc     de
        cp      '"'
        jr      nz,skip3
        inc     l
skip3:  cp      ':'
        jr      nz,skip2
        bit     0,l
        jr      nz,skip2
        ld      a,h
        cp      TK_DATA
        jr      nz,skip2
        dec     de
skip4:  ld      a,h
        ret

; Z when the statement ends at DE. Changes A.
at_end: ld      a,(de)
        or      a
        ret     z
        cp      ':'
        ret     z
        cp      TK_QUOTE
        ret     z
        cp      TK_ELSE
        ret

; DE to the end of the statement. Changes A, HL.
skip_statement:
        call    at_end
        ret     z
        call    skip_token
        jr      skip_statement

st_tron:
        ld      a,1
        jr      troff1
st_troff:
        xor     a
troff1: ld      (TRACE),a
        ret

; Statements in the order of their tokens, from 0x80.
statements:
        .word   st_end, st_for, st_next, st_dim, st_read, st_input, st_let, st_if
        .word   st_return, st_stop, st_on, st_print, st_cont, st_new, st_clear, st_while
        .word   st_wend, st_renum, st_cls, st_graphics, st_ink, st_paper, st_palette, st_border
        .word   st_plot, st_draw, st_circle, st_paint, st_locate, st_sound, st_beep, st_poke
        .word   st_out, st_call, st_load, st_save, st_verify, st_data, st_rem, st_rem
        .word   st_goto, st_gosub, st_run, st_restore, st_list, st_delete, st_rem
; And from TK_DEF.
statements2:
        .word   st_def, skip_statement, st_defstr, skip_statement, skip_statement, st_randomize, st_line, st_swap
        .word   st_lprint, st_erase, st_tron, st_troff, skip_statement, st_error, st_resume, st_llist
        .word   st_auto
