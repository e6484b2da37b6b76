; ROM of the free card slot 3, seen at 0xC000 there. No code yet: its name, then an empty ROM.
        .text
        .asciz  "IO3"
