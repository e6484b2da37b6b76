; ROM of the sound card: four pages of 8 KB, selected by port 0x36 and seen at 0xC000 in slot 2.
; There is no player in it: each page says so.
        .include "card.inc"
        .text
        card_page "sound card, no player, ROM page 0"
        .org    0x2000, 0xFF
        card_page "sound card, no player, ROM page 1"
        .org    0x4000, 0xFF
        card_page "sound card, no player, ROM page 2"
        .org    0x6000, 0xFF
        card_page "sound card, no player, ROM page 3"
