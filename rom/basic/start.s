; Start of the interpreter, the prompt, errors, program lines typed in.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  basic_start, basic_error, basic_char, basic_rst, ready, raise_error, raise_long
        .globl  st_new, st_delete, st_list, st_renum, new_program, check_program, decimal, raise_syntax
        .text

; From the system, A = 0 after a cold start, 1 after a warm one: then the program stays.
basic_start:
        ld      sp,STACKTOP
        or      a
        jr      z,start1
        ld      hl,(PROGSTART)
        ld      de,PROGRAM
        or      a
        sbc     hl,de
        jr      nz,start1
        ld      hl,(PROGEND)
        or      a
        sbc     hl,de
        jr      c,start1
        ld      de,(RAMTOP)
        ld      hl,(PROGEND)
        or      a
        sbc     hl,de
        jr      nc,start1
        call    clear
        jr      ready
start1: call    new_program
        jr      ready

st_new: call    new_program

; The prompt. Everything that ends a program comes here.
ready:  ld      sp,STACKTOP
        ld      hl,0
        ld      (CURLINE),hl
        call    new_row
        ld      hl,prompt
        call    con_str
ready1: call    con_line
        ld      a,0
        ld      (BREAKKEY),a
        jr      c,ready_break
        ld      hl,(PROGEND)            ; a program may have been put there meanwhile
        ld      de,(ENDCOPY)
        or      a
        sbc     hl,de
        call    nz,check_program
        ld      hl,LINEBUF
ready2: ld      a,(hl)
        inc     hl
        cp      ' '
        jr      z,ready2
        or      a
        jr      z,ready1
        dec     hl
        sub     '0'
        cp      10
        jr      c,ready_line
        ext     tokenise
        ld      de,TOKENBUF + 3
        jp      run_statement
ready_break:
        call    new_row
        jr      ready1

; A line that begins with a number goes into the program.
ready_line:
        call    decimal
        jr      c,long_number
        ld      (TOKENBUF + 1),de
        ld      a,(hl)
        cp      ' '
        jr      nz,line1
        inc     hl
line1:  ext     tokenise                ; E = length of the line
        ld      a,e
        ld      (TOKENBUF),a
        call    enter_line
        jr      ready1
long_number:
        jp      syntax_error

prompt: .asciz  "Ready\r"

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

; The line in TOKENBUF replaces one of the same number, or goes to its place, or, without tokens, just takes
; the old one away. Changes all.
enter_line:
        ld      de,(TOKENBUF + 1)
        call    find_line
        jr      nz,enter1
        ld      e,(hl)
        ld      d,0
        push    hl
        add     hl,de
        pop     de
        push    de
        call    close_gap
        pop     hl
enter1: ld      a,(TOKENBUF)
        cp      5
        jp      c,clear
        ld      c,a
        ld      b,0
        push    hl                      ; place
        ld      hl,(PROGEND)
        push    hl
        add     hl,bc
        inc     h                       ; 256 bytes for variables
        jr      c,enter_full
        ld      de,(RAMTOP)
        or      a
        sbc     hl,de
        jr      nc,enter_full
        add     hl,de
        dec     h
        ld      (PROGEND),hl
        ex      de,hl                   ; DE = new end
        pop     hl                      ; old end
        pop     bc
        push    bc
        push    hl
        or      a
        sbc     hl,bc
        ld      b,h
        ld      c,l
        pop     hl
        dec     hl
        dec     de
        lddr
        pop     de
        ld      hl,TOKENBUF
        ld      c,(hl)
        ld      b,0
        ldir
        jp      clear
enter_full:
        call    clear
        jp      memory_error

; The program's bytes from HL on move down to DE. Changes all.
close_gap:
        ld      b,h
        ld      c,l
        ld      hl,(PROGEND)
        or      a
        sbc     hl,bc
        push    hl
        ld      h,b
        ld      l,c
        pop     bc
        ldir
        ld      (PROGEND),de
        ret

; DELETE from-to
st_delete:
        call    at_end
        jr      z,delete_none
        call    line_range
        ld      de,(RANGELOW)
        call    find_line
        push    hl
        ld      de,(RANGEHIGH)
        inc     de
        ld      a,d
        or      e
        ld      hl,(PROGEND)
        dec     hl
        call    nz,find_line
        pop     de
        push    hl
        or      a
        sbc     hl,de
        pop     hl
        call    nc,close_gap
        call    clear
        jp      ready
delete_none:
        jp      syntax_error

; LIST [from][-to]
st_list:
        call    line_range
        push    de
        ext     list_program
        pop     de
        ret

; RENUM [start [, step]]
st_renum:
        ld      hl,10
        ld      (RANGELOW),hl
        ld      (RANGEHIGH),hl
        call    at_end
        jr      z,renum1
        int_arg
        ld      (RANGELOW),hl
        ld      a,(de)
        cp      ','
        jr      nz,renum1
        inc     de
        int_arg
        ld      (RANGEHIGH),hl
renum1: ext     renumber
        jr      c,renum_bad
        call    clear
        jp      ready
renum_bad:
        raise   E_QUANTITY

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

; A program that came from outside: the last line is the last that ends before PROGEND, a length of 0 follows.
; Then as clear.
check_program:
        ld      hl,(PROGSTART)
        ld      b,0
        jr      check3
check1: ld      c,(hl)
        inc     c
        dec     c
        jr      z,check2
        push    hl
        add     hl,bc
        ex      de,hl
        ld      hl,(PROGEND)
        or      a
        sbc     hl,de                   ; CF = 1: the line goes on behind the end
        pop     hl
        jr      c,check2
        ex      de,hl
check3: ld      de,(PROGEND)
        push    hl
        or      a
        sbc     hl,de
        pop     hl
        jr      c,check1
check2: ld      (hl),0
        inc     hl
        ld      (PROGEND),hl
        jp      clear

; An empty program.
new_program:
        ld      hl,PROGRAM
        ld      (PROGSTART),hl
        ld      (hl),0
        inc     hl
        ld      (PROGEND),hl
        jp      clear

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
        ld      sp,STACKTOP
        ld      hl,PENDING
        ld      (STRTOP),hl
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
        inc     hl
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        call    con_number
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
