; ROM of the floppy card: four pages of 4 KB, selected by port 0x18 and seen at 0xC000 in slot 0.
; There is no disk system in it: each page says so.
        .include "card.inc"
        .text
        card_page "floppy card, no disk system, ROM page 0"
        .org    0x1000, 0xFF
        card_page "floppy card, no disk system, ROM page 1"
        .org    0x2000, 0xFF
        card_page "floppy card, no disk system, ROM page 2"
        .org    0x3000, 0xFF
        card_page "floppy card, no disk system, ROM page 3"
