; Extension ROM, seen at 0xE000 when page 3 shows the cards. No code yet: its name, then an empty ROM.
        .text
        .if     VERSION == 22
        .asciz  "TVC22 D7"
        .else
        .asciz  "TVC12 D7"
        .endif
