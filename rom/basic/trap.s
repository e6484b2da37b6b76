; ON ERROR, RESUME, ERROR.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  on_error, st_resume, st_error, trap_error
        .text

; ON ERROR GOTO line; 0 ends it, and lets an error that is being dealt with end the program.
on_error:
        inc     de
        expect  TK_GOTO
        call    line_number
        ld      a,h
        or      l
        jr      z,error_off
        push    de
        call    target
        pop     de
        ld      (ERRLINE),hl
        ret
error_off:
        ld      (ERRLINE),hl
        ld      a,(ERRSTATE)
        or      a
        ret     z
        ld      hl,(ERRCUR)
        ld      (CURLINE),hl
        ld      a,(ERRNUMBER)
        jr      error1

; ERROR number: the error with this number, one of the program's own if there is no such.
st_error:
        call    eval_byte
        or      a
        jp      z,bad_value
error1: ld      (ERRNUMBER),a
        ld      hl,error_numbers
        ld      bc,E_USER - 1
        cpir
        ld      a,E_USER
        jr      nz,error2
        sub     c
        dec     a
error2: jp      raise_error

; An error, ERRORCODE, of a program: to the line of ON ERROR GOTO, if there is one and it is not at work. Comes back
; if not.
trap_error:
        ld      a,(ERRORCODE)
        ld      c,a
        cp      E_USER
        jr      z,trap1
        ld      b,0
        ld      hl,error_numbers - 1
        add     hl,bc
        ld      a,(hl)
        ld      (ERRNUMBER),a
trap1:  ld      hl,(CURLINE)
        ld      a,h
        or      l
        ret     z
        push    hl
        inc     hl
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        ld      (ERRLINENO),de
        pop     de
        ld      a,c
        cp      E_BREAK
        ret     z
        ld      a,(ERRSTATE)
        ld      hl,(ERRLINE)
        or      a
        ret     nz
        or      h
        ret     z
        ld      (ERRCUR),de
        ld      de,(STATEMENT)
        ld      (ERRTEXT),de
        ex      de,hl
        ld      a,1
        ld      (ERRSTATE),a
        pop     hl
        dec     de                      ; the 0 in front of the line
        jp      run_next

; RESUME [0]: once more the statement that failed; RESUME NEXT: the one behind it; RESUME line.
st_resume:
        ld      hl,ERRSTATE
        ld      a,(hl)
        or      a
        jr      z,resume_none
        ld      (hl),0
        ld      a,(de)
        cp      TK_NEXT
        jr      z,resume_next
        cp      TK_LINE
        jr      nz,resume_again
        call    line_number
        ld      a,h
        or      l
        jp      nz,goto_line
resume_again:
        call    must_end
        call    resume_place
        pop     hl
        jp      run_statement
resume_next:
        inc     de
        call    must_end
        call    resume_place
        jp      skip_statement
resume_place:
        ld      hl,(ERRCUR)
        ld      (CURLINE),hl
        ld      de,(ERRTEXT)
        ret
resume_none:
        raise   E_RESUME

; ERR for each error, in the order of their numbers.
error_numbers:
        .byte   2, 6, 11, 5, 7, 13, 9, 10, 1, 3, 30, 4, 8, 15, 17, 16, 12, 24, 57, 58, 54, 23, 18, 20
