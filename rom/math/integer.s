; Whole parts.
        .include "math/math.inc"
        .globl  fp_int, fp_toint, fp_toaddr, floor_word
        .text

; HL = FACC rounded down, CF = 1 when that is not -32768 to 32767. FACC stays. Changes AF, BC, DE.
fp_toint:
        ld      a,(FACC)
        or      a
        ld      hl,(FACC + 1)
        ret     z
        call    floor_word
        ret     c
        bit     7,h
        ret     z
        ld      a,(FACC + 1)
        cpl
        rla
        ret

; HL = FACC rounded down, CF = 1 when that is not -32768 to 65535. FACC stays. Changes AF, BC, DE.
; C = 1 when FACC is not whole, else 0 (not when CF = 1).
fp_toaddr:
floor_word:
        ld      hl,(FACC + 1)
        ld      bc,0
        ld      a,(FACC)
        or      a
        ret     z
        sub     128
        jr      c,1f
        jr      nz,2f
1:      ld      hl,0                    ; below 1
        inc     c
        jr      6f
2:      cp      17
        ccf
        ret     c
        cpl
        add     a,17                    ; 16 - A
        ld      b,a
        ld      a,l
        or      0x80
        ld      l,h
        ld      h,a
        ld      a,(FACC + 3)
        ld      d,a
        ld      a,(FACC + 4)
        or      d
        ld      d,a
        ld      a,(FACC + 5)
        or      d
        jr      z,3f
        inc     c
3:      ld      a,b
        sub     8
        jr      c,4f
        ld      b,a
        ld      a,l
        ld      l,h
        ld      h,0
        or      a
        jr      z,4f
        ld      c,1
4:      inc     b
        jr      5f
7:      srl     h
        rr      l
        jr      nc,5f
        ld      c,1
5:      djnz    7b
6:      ld      a,(FACC + 1)
        or      a
        ret     p
        ld      b,0
        add     hl,bc                   ; negative: away from zero
        ex      de,hl
        ld      hl,0
        or      a
        sbc     hl,de
        ld      a,h
        cpl
        rla                             ; valid results are negative
        ret

; FACC = the largest whole number that is not above FACC.
fp_int:
        ld      a,(FACC)
        or      a
        ret     z
        call    fp_toint
        jp      nc,fp_fromint
        ld      a,(FACC)                ; 145 or more, or 144
        sub     168
        ret     nc
        neg
        ld      hl,FACC + 5             ; A bits of fraction, 1 to 24
        ld      c,0
1:      sub     8
        jr      c,2f
        ld      b,a
        ld      a,(hl)
        or      c
        ld      c,a
        ld      (hl),0
        dec     hl
        ld      a,b
        jr      1b
2:      add     a,8
        jr      z,4f
        ld      b,a
        ld      a,0xFF
3:      add     a,a
        djnz    3b
        ld      b,a
        cpl
        and     (hl)
        or      c
        ld      c,a
        ld      a,b
        and     (hl)
        ld      (hl),a
4:      inc     c
        dec     c
        ret     z
        ld      a,(FACC + 1)
        rla
        ret     nc
        ld      hl,minus_one
        jp      fp_add
minus_one:
        .byte   0, 0xFF, 0xFF, 0, 0, 0
