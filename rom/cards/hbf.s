; ROM of the floppy card: four pages of 4 KB, selected by port 0x18 and seen at 0xC000 in slot 0.
; No disk system yet: each page begins with its name and number, the rest is empty.
        .text
        .asciz  "HBF page 0"
        .org    0x1000, 0xFF
        .asciz  "HBF page 1"
        .org    0x2000, 0xFF
        .asciz  "HBF page 2"
        .org    0x3000, 0xFF
        .asciz  "HBF page 3"
