; Jumps, subroutines, IF, ON; the control stack.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  st_goto, st_gosub, st_return, st_if, st_on, goto_line, line_number, target, find_line, find_from
        .globl  ctl_room, ctl_resume
        .text

; GOTO line. The byte in front of a line is the 0 of the one before.
st_goto:
        call    line_number
goto_line:
        call    target
        ex      de,hl
        dec     de
        ret

; The line number at DE: HL, DE behind it.
line_number:
        ld      a,(de)
        cp      TK_LINE
        jp      nz,run_syntax
        inc     de
        next_word
        ret

; HL = address of the line with number HL, else error. It is searched for only once, from the present line on if it
; can be there. Changes A, BC, DE.
target: ex      de,hl
        ld      a,e
        rrca
        xor     d
        add     a,a
        add     a,a
        ld      l,a
        ld      h,PLACES >> 8
        ld      a,(hl)
        inc     l
        cp      e
        jr      nz,target1
        ld      a,(hl)
        cp      d
        jr      nz,target1
        inc     l
        ld      a,(hl)
        inc     l
        ld      h,(hl)
        ld      l,a
        inc     h
        dec     h
        ret     nz
        ld      hl,PLACES + 1
target1:
        push    hl
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        jr      z,target2
        compare_number
        dec     hl
        dec     hl
        jr      c,target3
target2:
        ld      hl,(PROGSTART)
target3:
        call    find_from
        jr      nz,target_none
        ld      b,h
        ld      c,l
        pop     hl
        ld      (hl),d
        dec     l
        ld      (hl),e
        inc     l
        inc     l
        ld      (hl),c
        inc     l
        ld      (hl),b
        ld      h,b
        ld      l,c
        ret
target_none:
        raise   E_LINE

; HL = first line with a number of at least DE, Z if it is DE's; or the end of the program, NZ. Changes A, BC.
find_line:
        ld      hl,(PROGSTART)
; The same from line HL on.
find_from:
        ld      b,0
from1:  ld      a,(hl)
        or      a
        jr      z,from_end
        ld      c,a
        compare_number
        jr      nc,from2
        dec     hl
        dec     hl
        add     hl,bc
        jr      from1
from2:  ld      a,(hl)
        xor     d
        ld      c,a
        dec     hl
        ld      a,(hl)
        xor     e
        or      c
        dec     hl
        ret
from_end:
        inc     a
        ret

; GOSUB line
st_gosub:
        call    line_number
gosub_line:
        push    hl
        ld      a,CTL_GOSUB
        call    ctl_room
        keep_place
        ld      (hl),CTL_GOSUB
        inc     hl
        ld      (CSP),hl
        pop     hl
        jp      goto_line

; Room for A bytes on the control stack, else error: HL = CSP. Keeps BC, DE.
ctl_room:
        push    de
        ld      hl,(CSP)
        ld      e,a
        ld      d,0
        add     hl,de
        ld      de,CTL_SPACE
        add     hl,de
        or      a
        sbc     hl,sp
        jr      nc,ctl_full
        pop     de
        ld      hl,(CSP)
        ret
ctl_full:
        jp      memory_error

; RETURN: loops begun in the subroutine are forgotten, but not by one without its GOSUB.
st_return:
        ld      hl,(CSP)
        ld      b,0
return1:
        dec     hl
        ld      a,(hl)
        or      a
        jr      z,return_none
        inc     hl
        ld      c,a
        sbc     hl,bc
        cp      CTL_GOSUB
        jr      nz,return1
        ld      (CSP),hl
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        inc     hl
        load_hl
        ld      (CURLINE),hl
        ret
return_none:
        raise   E_RETURN

; DE and CURLINE from the record that ends at IX.
ctl_resume:
        ld      e,(ix-5)
        ld      d,(ix-4)
        ld      l,(ix-3)
        ld      h,(ix-2)
        ld      (CURLINE),hl
        ret

; IF condition THEN line or statements [ELSE line or statements]; IF condition GOTO line ...
st_if:  call    eval_num
        ld      a,(de)
        cp      TK_GOTO
        jr      z,if_test
        cp      TK_THEN
        jr      nz,if_syntax
        inc     de
if_test:
        call    facc_test
        jr      z,if_else
if_do:  ld      a,(de)
        cp      TK_LINE
        jp      z,st_goto
        pop     hl
        jp      run_statement

; False: behind the ELSE that belongs to it, or to the end of the line.
if_else:
        ld      b,1
else1:  call    skip_token
        cp      TK_IF
        jr      nz,else2
        inc     b
else2:  cp      TK_ELSE
        jr      nz,else3
        djnz    else1
        jr      if_do
else3:  or      a
        jr      nz,else1
        dec     de
        ret
if_syntax:
        jp      syntax_error

; ON number GOTO or GOSUB line, ...: the next statement if there is no such.
st_on:  ld      a,(de)
        cp      TK_ERROR
        jp      z,on_error
        call    eval_byte
        ld      c,a
        ld      a,(de)
        inc     de
        cp      TK_GOTO
        jr      z,on1
        cp      TK_GOSUB
        jr      nz,if_syntax
on1:    ld      b,a
        push    bc
        ld      ix,0                    ; no line chosen
on2:    call    line_number
        dec     c
        jr      nz,on3
        push    hl
        pop     ix
        inc     b                       ; chosen
on3:    ld      a,(de)
        inc     de
        cp      ','
        jr      z,on2
        dec     de
        pop     af                      ; A = GOTO or GOSUB
        cp      b
        ret     z
        push    ix
        pop     hl
        cp      TK_GOTO
        jp      z,goto_line
        jp      gosub_line
