; ROM of the floppy card: four pages of 4 KB, selected by port 0x18 and seen at 0xC000 in slot 0.
; There is no disk system in it: each page says so.
        .include "card.inc"
        .text
        card_page "floppy card, no disk system, ROM page 0"

; Reads sectors of a track, as the controller gives them: at 0xCF00, in page 0.
; In:  A track, B number of sectors (0 is 256), C drive as the parameter register's bits 3-0, HL address
; Out: HL behind the last byte; changes AF, BC, DE
; The parameter register gets the drive with its motor on. A sector of which a part was read before is read to
; its end first, since nothing else takes the controller to a sector's beginning.
        .org    0x0F00, 0xFF
        ld      d, a
        ld      a, c
        or      0x40                    ; motor
        out     (0x14), a
        ld      a, d
        out     (0x11), a               ; track register
        ld      a, 0x10
        out     (0x10), a               ; Seek
rest:   in      a, (0x13)
        in      a, (0x14)
        rra                             ; bit 0: the last byte was read
        jr      nc, rest
        ld      e, 1
sector: ld      a, e
        out     (0x12), a               ; sector register
        ld      a, 0x80
        out     (0x10), a               ; Read Sector
byte:   in      a, (0x13)
        ld      (hl), a
        inc     hl
        in      a, (0x14)
        rra
        jr      nc, byte
        inc     e
        djnz    sector
        ret

        .org    0x1000, 0xFF
        card_page "floppy card, no disk system, ROM page 1"
        .org    0x2000, 0xFF
        card_page "floppy card, no disk system, ROM page 2"
        .org    0x3000, 0xFF
        card_page "floppy card, no disk system, ROM page 3"
