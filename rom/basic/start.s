; Start of the interpreter, the prompt, errors, program lines typed in.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  basic_start, basic_error, basic_char, basic_rst, ready, raise_error, raise_long
        .globl  st_new, st_delete, st_list, st_renum, new_program, check_program, decimal, raise_syntax
        .globl  keep_sum, compare_sum, must_end
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
        call    nz,compare_sum
        jr      nz,no_program
        call    check_program
        jr      ready

st_new: call    must_end
no_program:
        call    new_program

; The prompt. Everything that ends a program comes here.
ready:  ld      sp,STACKTOP
        call    end_direct
        ld      hl,0
        ld      (CURLINE),hl
        call    new_row
        ld      hl,prompt
        call    con_str
ready1: call    keep_sum
ready_wait:
        call    con_line
        ld      a,0
        ld      (BREAKKEY),a
        jr      c,ready_break
        ld      hl,(PROGEND)            ; a program may have been put there meanwhile
        ld      de,(ENDCOPY)
        or      a
        sbc     hl,de
        call    z,compare_sum
        call    nz,check_program
        ld      hl,LINEBUF
ready2: ld      a,(hl)
        inc     hl
        cp      ' '
        jr      z,ready2
        or      a
        jr      z,ready_wait
        dec     hl
        sub     '0'
        cp      10
        jr      c,ready_line
        ext     tokenise
        ld      de,TOKENBUF + 3
        jp      run_statement
ready_break:
        call    new_row
        jr      ready_wait

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
        ext     list_length
        call    enter_line
        jr      ready1
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

; The line in TOKENBUF replaces one of the same number, or goes to its place, or, without tokens, just takes
; the old one away. When there is no room all stays as it was. Changes all.
enter_line:
        call    check_program           ; a broken chain would move anything anywhere
        ld      de,(TOKENBUF + 1)
        call    find_line
        ld      bc,0
        jr      nz,enter1
        ld      c,(hl)
enter1: push    hl                      ; place
        push    bc                      ; length of the old line
        ld      a,(TOKENBUF)
        ld      e,a
        ld      d,b
        ld      hl,(PROGEND)
        sbc     hl,bc                   ; CF is 0
        add     hl,de
        inc     h                       ; 256 bytes for variables
        ld      de,(RAMTOP)
        sbc     hl,de
        jr      c,enter2
        cp      5
        jp      nc,memory_error
enter2: pop     bc
        pop     de
        ld      h,d
        ld      l,e
        add     hl,bc
        push    de
        ld      a,c
        or      a
        call    nz,close_gap
        pop     hl
        ld      a,(TOKENBUF)
        cp      5
        jp      c,clear
        ld      c,a
        ld      b,0
        push    hl                      ; place
        ld      hl,(PROGEND)
        push    hl
        add     hl,bc
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
        call    must_end
        call    check_program
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
renum1: call    must_end
        call    check_program
        ext     renumber
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

; A program that came from outside, or may be damaged: it ends before the first line that has less than 4 bytes,
; goes on behind PROGEND or does not end with a 0; a length of 0 follows. None at all if the pointers are no
; good. Then as clear. Changes all but DE.
check_program:
        push    de
        ld      hl,(PROGSTART)
        ld      de,PROGRAM
        or      a
        sbc     hl,de
        jr      nz,check_none
        ld      hl,(PROGEND)
        ld      b,h
        ld      c,l                     ; BC = end
        sbc     hl,de
        jr      c,check_none
        ld      hl,(RAMTOP)
        scf
        sbc     hl,bc                   ; the final 0 may be missing
        jr      c,check_none
        ex      de,hl
check1: ld      d,h                     ; HL = DE = line
        ld      e,l
        or      a
        sbc     hl,bc
        jr      nc,check2
        ld      a,(de)
        cp      4
        jr      c,check2
        ld      l,a
        ld      h,0
        add     hl,de
        jr      c,check2
        scf
        sbc     hl,bc
        jr      nc,check2               ; it may end at PROGEND
        adc     hl,bc                   ; CF is 1
        dec     hl
        ld      a,(hl)
        inc     hl
        or      a
        jr      z,check1
check2: ex      de,hl
        ld      (hl),0
        inc     hl
        ld      (PROGEND),hl
        pop     de
        jp      clear
check_none:
        pop     de

; An empty program.
new_program:
        ld      hl,PROGRAM
        ld      (PROGSTART),hl
        ld      (hl),0
        inc     hl
        ld      (PROGEND),hl
        jp      clear

; PROGSUM = sum of the program's bytes. Changes all but DE.
keep_sum:
        call    program_sum
        ld      (PROGSUM),hl
        ret
; Z when the sum is still PROGSUM. Changes all but DE.
compare_sum:
        call    program_sum
        ld      bc,(PROGSUM)
        or      a
        sbc     hl,bc
        ret
; HL = sum of the program's bytes, in which their order matters too: L is turned at each byte, H adds it up at
; each fourth. 23 T-states a byte. Changes AF, BC.
program_sum:
        push    de
        ld      hl,(PROGEND)
        ld      de,(PROGSTART)
        or      a
        sbc     hl,de
        ex      de,hl                   ; HL = program, DE = bytes
        ld      a,e
        and     15
        ld      b,a
        ld      c,4                     ; DE = groups of 16
sum1:   srl     d
        rr      e
        dec     c
        jr      nz,sum1
        inc     b
        xor     a
        jr      sum3
sum2:   add     a,(hl)
        rlca
        inc     hl
        push    af
        add     a,c
        ld      c,a
        pop     af
sum3:   djnz    sum2
        jr      sum5
sum4:
        .rept   4
        .rept   4
        add     a,(hl)
        rlca
        inc     hl
        .endr
        ld      b,a
        add     a,c
        ld      c,a
        ld      a,b
        .endr
        dec     de
sum5:   ld      b,a
        ld      a,d
        or      e
        ld      a,b
        jr      nz,sum4
        ld      l,a
        ld      h,c
        pop     de
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
