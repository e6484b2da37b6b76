; The cursor interrupt, 50 times a second below the picture: clock, end of the tone, keyboard.
        .include "memory.inc"
        .globl  interrupt
        .text

; Called from the vector in U0, with AF kept there and the ROM in page 3. The request stays up for about
; 28 T-states; all that comes before the acknowledge takes longer, so that it is not raised again.
interrupt:
        push    bc
        push    de
        push    hl
        out     (7),a
        out     (0x58),a                ; the cards' requests: nothing here serves them
        out     (0x59),a
        out     (0x5A),a
        out     (0x5B),a

        ld      hl,(TICKS)
        inc     hl
        ld      (TICKS),hl
        ld      a,h
        or      l
        jr      nz,tone1
        ld      hl,(TICKS + 2)
        inc     hl
        ld      (TICKS + 2),hl

tone1:  ld      hl,(SNDLEFT)
        ld      a,h
        or      l
        jr      z,keys1
        dec     hl
        ld      (SNDLEFT),hl
        ld      a,h
        or      l
        call    z,snd_off

; All rows, first as they are; the keys that are down but not served yet, or no longer down, gather in E.
keys1:  ld      hl,KEYROWS
        ld      a,(PORT3)
        and     0xC0
        ld      c,a
        ld      b,9
        ld      e,0
scan1:  ld      a,c
        out     (3),a
        in      a,(0x58)
        cpl
        ld      (hl),a
        inc     hl
        xor     (hl)
        or      e
        ld      e,a
        inc     hl
        inc     c
        djnz    scan1
        ld      a,(PORT3)
        out     (3),a
        ld      a,e
        or      a
        call    nz,key_changes
        ld      hl,REPEATKEY
        ld      a,(hl)
        or      a
        call    nz,key_repeat
        call    INTHOOK
        pop     hl
        pop     de
        pop     bc
        ret
