; ROM of the sound card: four pages of 8 KB, selected by port 0x36 and seen at 0xC000 in slot 2.
; No player yet: each page begins with its name and number, the rest is empty.
        .text
        .asciz  "SNDMX page 0"
        .org    0x2000, 0xFF
        .asciz  "SNDMX page 1"
        .org    0x4000, 0xFF
        .asciz  "SNDMX page 2"
        .org    0x6000, 0xFF
        .asciz  "SNDMX page 3"
