; What stands at 0x0000 in U0: restart and interrupt vectors, and the trampolines between the system ROM
; and the extension, which hide each other. Copied from here at every start; runs at 0x0000 only.
        .include "memory.inc"
        .include "basic.inc"
        .globl  low_page, LOW_SIZE, START_CART, OUT_SCREEN, OUT_PRINTER
        .text

low_page:
        di                              ; RST 0 is as a reset: with SYS in page 0 the ROM's own
        ld      a,0x60                  ; first bytes go on
        out     (2),a

        .org    0x08, 0
        jp      low_error - low_page
        .org    0x10, 0
        jp      low_out - low_page
        .org    0x18, 0
        jp      basic_char
        .org    0x20, 0
        jp      low_ext - low_page
        .org    0x28, 0
        jp      low_sys - low_page
        .org    0x30, 0
        jp      basic_rst

; Whatever page 3 and page 2 show is put back from PORT2.
        .org    0x38, 0
        push    af
        ld      a,PAGES
        out     (2),a
        call    interrupt
        ld      a,(PORT2)
        out     (2),a
        pop     af
        ei
        reti

        .org    0x66, 0
        .byte   0xFD, 0xF2              ; NMI: the emulator's reset instruction

; The number is taken while its page is still there; basic_error finds it through the address on the stack.
low_error:
        pop     hl
        ld      a,(hl)
        ld      hl,ERRORCODE
        ld      (hl),a
        push    hl
        ld      a,PAGES
        ld      (PORT2),a
        out     (2),a
        jp      basic_error

low_out:
        ld      (TRAMPA),a
        ld      a,(PORT2)
        cp      PAGES
        ld      a,(TRAMPA)
        jp      z,con_out
        sys     con_out
        ret

; The same to the printer: a new line is 13 and 10.
low_printer:
        push    hl
        ld      hl,PRINTCOL
        inc     (hl)
        cp      13
        jr      nz,printer1
        ld      (hl),0
        call    printer2 - low_page
        ld      a,10
printer1:
        call    printer2 - low_page
        pop     hl
        ret
printer2:
        out     (1),a
        ld      a,(PORT6)
        and     0x7F                    ; the strobe
        out     (6),a
        or      0x80
        out     (6),a
        ret

; Calls the routine whose address is the word behind the RST, with the page of the trampoline's name; all
; registers and flags pass both ways (no instruction here changes a flag). The caller's page comes back.
low_sys:
        ld      (TRAMPA),a
        ld      a,PAGES
        jr      trampoline
low_ext:
        ld      (TRAMPA),a
        ld      a,PAGES_EXT
trampoline:
        ld      (TRAMPHL),hl
        pop     hl
        push    af                      ; new page
        ld      a,(hl)
        ld      (to_routine - low_page + 1),a
        inc     hl
        ld      a,(hl)
        ld      (to_routine - low_page + 2),a
        inc     hl
        ld      a,(PORT2)
        ex      (sp),hl                 ; HL = new page and flags, stack = return address
        push    af                      ; old page
        push    hl
        ld      hl,from_routine - low_page
        ex      (sp),hl                 ; return address of the routine
        ld      a,h
        ld      (PORT2),a
        out     (2),a
        ld      hl,(TRAMPHL)
        ld      a,(TRAMPA)
to_routine:
        jp      0
from_routine:
        ld      (TRAMPHL),hl
        ld      (TRAMPA),a
        pop     hl
        ld      a,h
        ld      (PORT2),a
        out     (2),a
        ld      hl,(TRAMPHL)
        ld      a,(TRAMPA)
        ret

; Calls the cartridge's code, behind its mark, when there is one; the cartridge may return. Changes everything.
low_cart:
        ld      a,PAGES_CART
        ld      (PORT2),a
        out     (2),a
        ld      hl,0xC000
        ld      de,cart_mark - low_page
        ld      b,4
cart1:  ld      a,(de)
        cp      (hl)
        jr      nz,cart2
        inc     de
        inc     hl
        djnz    cart1
        call    cart3 - low_page
cart2:  ld      a,PAGES
        ld      (PORT2),a
        out     (2),a
        ret
cart3:  jp      (hl)
cart_mark:
        .ascii  "QCRT"
        .equ    START_CART, low_cart - low_page
        .equ    OUT_SCREEN, low_out - low_page
        .equ    OUT_PRINTER, low_printer - low_page
        .equ    LOW_SIZE, . - low_page
