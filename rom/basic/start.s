; Start of the interpreter, the prompt, errors, program lines typed in.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  basic_start, basic_error, basic_char, basic_rst, ready, raise_error, raise_long
        .globl  st_new, st_delete, st_list, st_renum, decimal, raise_syntax
        .globl  line_out, must_end
        .text

; From the system, A = 0 after a cold start, 1 after a warm one: then the program stays, as far as its lines are
; sound; not one of which a LOAD has overwritten a part.
basic_start:
        ld      sp,STACKTOP
        ld      hl,0
        ld      (PARSESP),hl
        or      a
        jr      z,no_program
        ld      hl,LOADING
        ld      a,(hl)
        ld      (hl),0
        or      a
        jr      z,start1
        ext     compare_sum
        jr      nz,no_program
start1:
        ext     check_program
        jr      ready

st_new: call    must_end
no_program:
        ext     new_program

; The prompt. Everything that ends a program comes here.
ready:  ld      sp,STACKTOP
        call    end_direct
        ld      hl,0
        ld      (CURLINE),hl
        call    new_row
        ld      hl,prompt
        call    con_str
ready1: ext     keep_sum
ready_wait:
        ld      hl,(AUTOSTEP)
        ld      a,h
        or      l
        jr      z,ready3
        call    new_row
        ld      hl,(AUTOLINE)
        call    con_number
        ld      a,' '
        rst     RST_OUT
        xor     a                       ; the number counts too
        call    con_from
        jr      ready4
ready3: call    con_line
ready4: ld      a,0
        ld      (BREAKKEY),a
        jr      c,ready_break
        ld      hl,(PROGEND)            ; a program may have been put there meanwhile
        ld      de,(ENDCOPY)
        or      a
        sbc     hl,de
        jr      nz,ready5
        ext     compare_sum
        jr      z,ready6
ready5: ext     check_program
ready6:
        ld      hl,LINEBUF
ready2: ld      a,(hl)
        inc     hl
        cp      ' '
        jr      z,ready2
        or      a
        jr      z,ready_break
        dec     hl
        sub     '0'
        cp      10
        jr      c,ready_line
        ld      bc,0                    ; the end of AUTO
        ld      (AUTOSTEP),bc
        ext     tokenise
        ld      de,TOKENBUF + 3
        jp      run_statement
ready_break:
        ld      hl,0
        ld      (AUTOSTEP),hl
        call    new_row
        jr      ready_wait

; A line that begins with a number goes into the program.
ready_line:
        call    decimal
        jr      c,long_number
        ld      (TOKENBUF + 1),de
        ld      bc,(AUTOSTEP)
        ld      a,b
        or      c
        jr      z,line2
        ex      de,hl
        add     hl,bc
        ld      (AUTOLINE),hl
        ex      de,hl
        jr      c,line3
        ld      a,(hl)                  ; nothing but the number ends AUTO
        or      a
        jr      nz,line2
        ld      (AUTOSTEP),a
        ld      (AUTOSTEP + 1),a
        jp      ready1
line3:  ld      bc,0                    ; the last possible one
        ld      (AUTOSTEP),bc
line2:  ld      a,(hl)
        cp      ' '
        jr      nz,line1
        inc     hl
line1:  ext     tokenise                ; E = length of the line
        ld      a,e
        ld      (TOKENBUF),a
        ext     list_length
        ext     enter_line
        jp      ready1
long_number:
        jp      syntax_error

prompt: .asciz  "Ready\r"

; What a direct line has put on the control stack must not lead back into it: its records go with it, but those
; that a stopped program may still need lead to two zeros, its end. Changes AF, BC, DE, HL, IX.
end_direct:
        ld      ix,(CSP)
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        ld      c,a                     ; 0: records go, from the top on
direct1:
        ld      a,(ix-1)
        or      a
        ret     z
        ld      e,a
        ld      a,(ix-3)
        or      (ix-2)
        jr      nz,direct2
        ld      hl,direct_end
        ld      a,(ix-4)
        cp      h
        jr      z,direct2               ; in the ROM: one of those
        ld      (ix-5),l
        ld      (ix-4),h
        jr      direct3
direct2:
        ld      c,1
direct3:
        xor     a
        sub     e
        ld      e,a
        ld      d,-1
        add     ix,de
        ld      a,c
        or      a
        jr      nz,direct1
        ld      (CSP),ix
        jr      direct1
direct_end:
        .byte   0, 0

; Nothing may follow at DE, else error. Changes A.
must_end:
        call    at_end
        ret     z
        jp      syntax_error

; DE = number of the decimal digits at HL, HL behind them; CF = 1 when it is above 65535. Changes A, BC.
decimal:
        ld      de,0
decimal1:
        ld      a,(hl)
        sub     '0'
        cp      10
        ret     nc
        inc     hl
        push    hl
        ld      h,d
        ld      l,e
        add     hl,hl
        jr      c,decimal2
        add     hl,hl
        jr      c,decimal2
        add     hl,de
        jr      c,decimal2
        add     hl,hl
        jr      c,decimal2
        ld      e,a
        ld      d,0
        add     hl,de
        ex      de,hl
decimal2:
        pop     hl
        jr      nc,decimal1
        ret

; DELETE from-to: one of them at least.
st_delete:
        ld      a,(de)
        cp      TK_MINUS
        jr      nz,delete1
        inc     de
        ld      a,(de)
        dec     de
delete1:
        cp      TK_LINE
        jr      nz,delete_none
        call    line_range
        call    must_end
        ext     delete_lines
        jp      ready
delete_none:
        jp      syntax_error

; LIST [from][-to]
st_list:
        call    line_range
        call    must_end
        push    de
        ext     list_program
        pop     de
        ret

; RENUM [start [, step]]
st_renum:
        ext     renum_command
        jp      ready

; RANGELOW, RANGEHIGH from nothing, n, n-, -m or n-m at DE.
line_range:
        ld      hl,0
        ld      (RANGELOW),hl
        dec     hl
        ld      (RANGEHIGH),hl
        ld      a,(de)
        cp      TK_LINE
        jr      nz,range1
        call    line_number
        ld      (RANGELOW),hl
        ld      a,(de)
        cp      TK_MINUS
        jr      nz,range2
range1: ld      a,(de)
        cp      TK_MINUS
        ret     nz
        inc     de
        ld      a,(de)
        cp      TK_LINE
        ret     nz
        call    line_number
range2: ld      (RANGEHIGH),hl
        ret

; The error A. The others are called from the extension ROM: a line too long in tokens, a number too large.
raise_syntax:
        ld      a,E_SYNTAX
        jr      raise_error
raise_long:
        ld      a,E_LONG
raise_error:
        ld      (ERRORCODE),a

; RST 0x08 ends here, ERRORCODE is set.
basic_error:
        ld      hl,(PARSESP)
        ld      a,h
        or      l
        jp      nz,item_overflow        ; a number of INPUT
        ld      sp,STACKTOP
        ld      hl,PENDING
        ld      (STRTOP),hl
        call    screen_out
        ld      l,h                     ; H is 0
        ld      (AUTOSTEP),hl
        call    trap_error
        call    new_row
        ld      a,(ERRORCODE)
        ext     print_error
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        jr      z,error2
        push    hl
        ld      hl,in_line
        call    con_str
        pop     hl
        call    line_out
        ld      a,(ERRORCODE)
        cp      E_BREAK
        jr      z,error2
        ld      hl,0                    ; no CONT after an error
        ld      (OLDTEXT),hl
        ld      hl,STACKLOW + 1
        ld      (CSP),hl
error2: ld      a,13
        rst     RST_OUT
        xor     a
        ld      (BREAKKEY),a
        jp      ready
; The number of the line at HL to the screen. Changes everything.
line_out:
        inc     hl
        load_hl
        jp      con_number
in_line:
        .asciz  " in "

; RST 0x18: the token at DE must be the byte behind the RST. DE and the return address behind it. Changes A.
basic_char:
        ex      (sp),hl
        ld      a,(de)
        cp      (hl)
        inc     hl
        ex      (sp),hl
        inc     de
        ret     z
        jp      syntax_error

; RST 0x30: HL = the number at DE, -32768 to 65535.
basic_rst:
        jp      eval_int
