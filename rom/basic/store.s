; The program in memory: lines put in and taken away, checks of what came from outside. In the extension ROM.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  enter_line, delete_lines, check_program, new_program, keep_sum, compare_sum
        .section .ext,"x"

; The line in TOKENBUF replaces one of the same number, or goes to its place, or, without tokens, just takes
; the old one away. When there is no room all stays as it was. Changes all.
enter_line:
        call    check_program           ; a broken chain would move anything anywhere
        ld      de,(TOKENBUF + 1)
        sys     find_line
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
        jr      c,enter2
        sys     memory_error
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
        jr      c,enter3
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
enter3: sys     clear
        ret

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

; The lines from RANGELOW to RANGEHIGH go. Changes all.
delete_lines:
        call    check_program
        ld      de,(RANGELOW)
        sys     find_line
        push    hl
        ld      de,(RANGEHIGH)
        inc     de
        ld      a,d
        or      e
        ld      hl,(PROGEND)
        dec     hl
        jr      z,delete1
        sys     find_line
delete1:
        pop     de
        push    hl
        or      a
        sbc     hl,de
        pop     hl
        call    nc,close_gap
        sys     clear
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
        sys     clear
        ret
check_none:
        pop     de

; An empty program.
new_program:
        xor     a
        ld      (TRACE),a
        ld      hl,PROGRAM
        ld      (PROGSTART),hl
        ld      (hl),0
        inc     hl
        ld      (PROGEND),hl
        sys     clear
        ret

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

