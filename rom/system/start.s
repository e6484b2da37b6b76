; Cold and warm start: RAM test, hardware, vectors, banner.
        .include "memory.inc"
        .globl  start, con_number, crtc_write
        .text

; Interrupts are off. The warm-start mark decides: with it the RAM is kept.
start:  ld      a,PAGES
        out     (2),a
        xor     a
        out     (0x0F),a                ; video bank 0 for the processor and for the picture
        out     (3),a
        out     (5),a                   ; reset leaves port 5 at 0xFF, tone and its interrupt on
        ld      a,0x80                  ; no amplitude; bit 7 is the printer strobe, active low
        out     (6),a
        ld      a,(WARMMARK)
        sub     WARM                    ; Z: warm
        jr      z,warm

; RAM test: each byte must take 0xFF and come back as 0 after INC, which leaves all RAM 0. It ends at the
; first byte that fails, or at 0xC000. No stack meanwhile.
        ld      hl,0
        ld      a,0xFF
test1:  ld      (hl),a                  ; twice, as the loop costs more than the work
        inc     (hl)
        jr      nz,tested
        inc     l
        ld      (hl),a
        inc     (hl)
        jr      nz,tested
        inc     l
        jr      nz,test1
        cp      (hl)                    ; an empty bus would have read 0xFF all along
        jr      z,tested
        inc     h
        ld      a,h
        cp      0xC0
        ld      a,0xFF
        jr      nz,test1
tested: ld      l,0
        ld      a,h
        cp      PROGRAM >> 8 + 2        ; below: nothing to work with
        jr      nc,cold
        ld      a,0x88                  ; bright red border, for good
        out     (0),a
        halt
cold:   ld      sp,STACKTOP
        push    hl
        ld      a,1                     ; NZ
        or      a
        jr      both

warm:   ld      sp,STACKTOP
        ld      hl,(RAMTOP)
        push    hl
both:   push    af
        ld      hl,SYSVARS
        ld      de,SYSVARS + 1
        ld      bc,0xFF
        ld      (hl),b
        ldir
        ld      hl,low_page
        ld      d,b
        ld      e,b
        ld      bc,LOW_SIZE
        ldir

        ld      a,PAGES
        ld      (PORT2),a
        ld      a,0xC9                  ; no routine of the user's in the interrupt
        ld      (INTHOOK),a
        ld      hl,crtc
        ld      b,0
crtc1:  ld      a,(hl)
        inc     hl
        call    crtc_write
        inc     b
        bit     4,b                     ; registers 0 to 15
        jr      z,crtc1
        ld      bc,0x0400               ; palette registers 0 to 3, then the border
colour1: ld     a,c
        push    bc
        ld      c,(hl)
        inc     hl
        call    gfx_palette
        pop     bc
        inc     c
        djnz    colour1
        ld      a,(hl)
        call    gfx_border
        im      1
        out     (7),a                   ; whatever is pending is not ours
        xor     a
        call    gfx_mode                ; leaves interrupts on

        pop     bc                      ; C: flags, Z for a warm start
        pop     hl
        ld      (RAMTOP),hl
        push    bc
        push    hl
        ld      hl,banner
        call    con_str
        pop     hl
        push    hl
        ld      l,h                     ; pages of 256 bytes: KB by four
        ld      h,0
        srl     l
        srl     l
        call    con_number
        ld      hl,banner_ram
        call    con_str
        pop     hl
        ld      de,-PROGRAM
        add     hl,de
        call    con_number
        ld      hl,banner_free
        call    con_str
        ext     card_list
        ld      a,13
        rst     RST_OUT
        ld      a,WARM
        ld      (WARMMARK),a
        call    START_CART
        pop     af
        ld      a,1
        jp      z,basic_start
        xor     a
        jp      basic_start

; Register B of the CRTC = A. Changes A. (An OUT to these ports changes A, as the CRTC masks it.)
crtc_write:
        push    af
        ld      a,b
        out     (0x70),a
        pop     af
        out     (0x71),a
        ret

; HL as a decimal number to the screen, unsigned. Changes A, BC, DE, HL.
con_number:
        ld      de,powers
        ld      b,0                     ; nothing printed yet
number1: ld     a,(de)
        inc     de
        ld      c,a
        ld      a,(de)
        inc     de
        push    de
        ld      d,a
        ld      e,c
        ld      a,'0' - 1
number2: inc    a
        or      a
        sbc     hl,de
        jr      nc,number2
        add     hl,de
        dec     e                       ; the last power, 1, is always printed
        jr      z,number3
        cp      '0'
        jr      nz,number3
        inc     b
        dec     b
        jr      z,number4
number3: ld     b,1
        rst     RST_OUT
number4: pop    de
        ld      a,(de)                  ; 0 behind the last power
        or      a
        jr      nz,number1
        ret
powers: .word   10000, 1000, 100, 10, 1
        .byte   0

; CRTC registers 0 to 15: 64 characters by 60 rows of four lines, centred in the border.
; left = (83 - R2) * 8 = 64, top = (R5 - R7 * 4) * 2 + 572 = 48. The cursor stands at position 0xF80,
; behind the picture's 60 * 64 = 0xF00 characters; R10 below 4 lets it raise the interrupt.
crtc:   .byte   99, 64, 75, 0x32, 77, 2, 60, 66, 0, 3, 3, 3, 0, 0, 0x0F, 0x80
        .byte   1, 15, 14, 12           ; blue, white, bright yellow, bright green; the border blue
        .byte   1

banner_ram:
        .asciz  " KB\r"
banner_free:
        .asciz  " bytes free\r"
