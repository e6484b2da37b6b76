; First bytes of the system ROM: what the processor runs after a reset, and the table of system calls.
; Linked first, at 0xC000. At a reset the same ROM stands at 0x0000 too, and only there.
        .include "memory.inc"
        .text

        di                              ; RST 0 in U0 runs the same instructions as far as the OUT
        ld      a,0x60                  ; SYS stays in page 0 and comes to page 3: go on there
        out     (2),a
        jp      start
        .asciz  "QUOLL SYSTEM"

; The NMI request stays on until a reset, so the answer is one: the emulator's reset instruction.
        .org    0x66, 0xFF
        .byte   0xFD, 0xF2

; System calls for machine-code programs: the order never changes, new ones come at the end.
        .org    0x80, 0xFF
        jp      con_out                 ; 0xC080
        jp      con_str
        jp      con_column
        jp      con_width
        jp      con_locate
        jp      con_line
        jp      key_get
        jp      key_poll
        jp      con_clear
        jp      gfx_mode                ; 0xC09B
        jp      gfx_ink
        jp      gfx_paper
        jp      gfx_palette
        jp      gfx_border
        jp      snd_tone
        jp      call_plot               ; 0xC0AD
        jp      call_point
        jp      call_line
        jp      call_circle
        jp      call_paint
        jp      call_save               ; 0xC0BC
        jp      call_load
        jp      call_verify
        jp      con_number              ; 0xC0C5
        jp      crtc_write
        jp      call_card

; The calls into the extension ROM.
call_plot:
        ext     gfx_plot
        ret
call_point:
        ext     gfx_point
        ret
call_line:
        ext     gfx_line
        ret
call_circle:
        ext     gfx_circle
        ret
call_paint:
        ext     gfx_paint_call
        ret
call_save:
        ext     tape_save
        ret
call_load:
        ext     tape_load
        ret
call_card:
        ext     card_name
        ret
call_verify:
        ext     tape_verify
        ret
