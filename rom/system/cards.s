; The card slots, in the extension ROM: their windows, 0xC000 to 0xDFFF, are in the same page. Nothing is ever
; written into a window: with most cards that would end the machine.
        .include "memory.inc"
        .globl  card_name, card_list
        .section .ext,"x"

; Lets the card in slot A (0 to 3) say what it is: CF = 0, and its text is on the screen. CF = 1 when there is
; no ROM, or one without our mark. Changes AF, BC, DE, HL.
card_name:
        and     3
        ld      d,a
        rrca
        rrca
        ld      (PORT3),a
        out     (3),a
        ld      hl,(0xC003)
        ld      bc,0x4351               ; "QC"
        or      a
        sbc     hl,bc
        scf
        jr      nz,name2
        ld      hl,text_slot
name1:  ld      a,(hl)
        or      a
        jr      z,name3
        rst     RST_OUT
        inc     hl
        jr      name1
name3:  ld      a,d
        add     a,'0'
        rst     RST_OUT
        ld      a,':'
        rst     RST_OUT
        ld      a,' '
        rst     RST_OUT
        call    0xC000
        ld      a,13
        rst     RST_OUT
        or      a
name2:  ld      a,0
        ld      (PORT3),a
        out     (3),a
        ret
text_slot:
        .asciz  "Slot "

; The same for all four slots. Changes AF, BC, DE, HL.
card_list:
        xor     a
list1:  push    af
        call    card_name
        pop     af
        inc     a
        cp      4
        jr      nz,list1
        ret
