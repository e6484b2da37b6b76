; Later functions: what of them stands in the extension ROM.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  find_text, clock_text, change_case, two_digits
        .section .ext,"x"

; INSTR: A = place of the string value in the last pending string, which is taken, from place A (1 and up) on; 0 when
; it is not there. Keeps DE.
find_text:
        push    de
        ld      c,a
        sys     str_pop                 ; A characters at HL
        sub     c
        jr      c,find_none             ; it begins behind the end
        inc     a
        ld      b,a                     ; places left, C = the first
        ld      a,c
        dec     a
        add     a,l
        ld      l,a
        jr      nc,find1
        inc     h
find1:  ld      a,(SLEN)
        or      a
        jr      z,find_here
find2:  ld      a,(SLEN)
        cp      b
        jr      z,find3
        jr      nc,find_none
find3:  push    hl
        push    bc
        ld      de,(SADDR)
        ld      b,a
find4:  ld      a,(de)
        cp      (hl)
        inc     de
        inc     hl
        jr      nz,find5
        djnz    find4
find5:  pop     bc
        pop     hl
        jr      z,find_here
        inc     hl
        inc     c
        djnz    find2
find_none:
        ld      c,0
find_here:
        ld      a,c
        pop     de
        ret

; TIME$: "hh:mm:ss" in TEXTBUF, since the start. Keeps DE.
clock_text:
        push    de
        di
        ld      hl,(TICKS)
        ld      de,(TICKS + 2)
        ei
        ld      c,50
        call    divide
        ld      c,60
        call    divide
        push    af
        call    divide
        push    af
        ld      c,24
        call    divide
        ld      hl,TEXTBUF
        call    two_digits
        pop     af
        call    two_digits
        pop     af
        call    two_digits
        pop     de
        ret
; DE:HL = DE:HL / C, A = the rest. Changes B.
divide: xor     a
        ld      b,32
divide1:
        add     hl,hl
        rl      e
        rl      d
        rla
        cp      c
        jr      c,divide2
        sub     c
        inc     l
divide2:
        djnz    divide1
        ret
; A as two digits and a colon to (HL).
two_digits:
        ld      (hl),'0'
digits1:
        sub     10
        jr      c,digits2
        inc     (hl)
        jr      digits1
digits2:
        add     a,'0' + 10
        inc     hl
        ld      (hl),a
        inc     hl
        ld      (hl),':'
        inc     hl
        ret

; The SLEN letters in TEXTBUF become capital ones, with C = 1 small ones. Keeps DE.
change_case:
        ld      hl,TEXTBUF
        ld      a,(SLEN)
        or      a
        ret     z
        ld      b,a
case1:  ld      a,(hl)
        bit     0,c
        jr      nz,case_small
        cp      'a'
        jr      c,case2
        cp      'z' + 1
        jr      c,case_turn
        cp      0x90
        jr      c,case2
        cp      0x99
        jr      nc,case2
        sub     0x10
        jr      case3
case_small:
        cp      'A'
        jr      c,case2
        cp      'Z' + 1
        jr      c,case_turn
        cp      0x80
        jr      c,case2
        cp      0x89
        jr      nc,case2
        add     a,0x10
        jr      case3
case_turn:
        xor     0x20
case3:  ld      (hl),a
case2:  inc     hl
        djnz    case1
        ret
