; The tone generator: one tone at a time, ended by the interrupt.
        .include "memory.inc"
        .globl  snd_tone, snd_start, snd_off
        .text

; Waits until the tone before has ended, then starts one: HL = pitch 0 to 4095 (frequency 195312.5 / (4096 -
; pitch) Hz), A = volume 0 to 15, BC = duration in units of 20 ms (0: only waits). A break key ends the
; waiting, and the new tone is not started then. Changes AF, BC, DE, HL; interrupts are on afterwards.
snd_tone:
        ei
        push    af
        push    hl
tone1:  ld      a,(BREAKKEY)
        or      a
        jr      nz,tone_break
        ld      hl,(SNDLEFT)
        ld      a,h
        or      l
        jr      z,tone2
        halt
        jr      tone1
tone_break:
        ld      bc,0
tone2:  pop     hl
        pop     af

; The same at once, in place of a tone that sounds.
snd_start:
        ld      e,a
        ld      a,b
        or      c
        ret     z
        ld      a,l
        di
        out     (4),a
        ld      a,h
        and     0x0F
        or      0x10
        ld      d,a
        ld      a,(PORT5)
        and     0xC0                    ; the tape motor is not ours
        or      d
        ld      (PORT5),a
        out     (5),a
        ld      a,e
        add     a,a
        add     a,a
        call    amplitude
        ld      (SNDLEFT),bc
        ei
        ret

; Ends the tone. Changes AF, E.
snd_off:
        ld      a,(PORT5)
        and     0xEF
        ld      (PORT5),a
        out     (5),a
        xor     a
amplitude:
        and     0x3C
        ld      e,a
        ld      a,(PORT6)
        and     0xC3
        or      e
        ld      (PORT6),a
        out     (6),a
        ret
