; Statements for screen, sound, memory, ports and tape.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  st_cls, st_graphics, st_ink, st_paper, st_palette, st_border, st_plot, st_draw, st_circle, st_paint
        .globl  st_locate, st_sound, st_beep, st_poke, st_out, st_call, st_load, st_save, st_verify, point_arg, half
        .text

st_cls: push    de
        call    con_clear
        pop     de
        ret

; GRAPHICS 2, 4 or 16: the number of colours.
st_graphics:
        call    eval_byte
        ld      b,0
        cp      2
        jr      z,graphics1
        inc     b
        cp      4
        jr      z,graphics1
        inc     b
        cp      16
        jp      nz,bad_value
graphics1:
        ld      a,b
        ld      hl,gfx_mode
        jr      with_a

st_ink: ld      hl,gfx_ink
        jr      colour_call
st_paper:
        ld      hl,gfx_paper
        jr      colour_call
st_border:
        ld      hl,gfx_border
; Calls HL with A = the colour at DE.
colour_call:
        push    hl
        call    colour
        pop     hl
; Calls HL, keeping DE.
with_a: push    de
        call    jump_hl
        pop     de
        ret

; A = C = a colour, 0 to 15.
colour: call    eval_byte
        ld      c,a
        cp      16
        ret     c
        jp      bad_value

; PALETTE register, colour
st_palette:
        call    eval_byte
        cp      4
        jp      nc,bad_value
        push    af
        call    comma
        call    colour
        pop     af
        ld      hl,gfx_palette
        jr      with_a

; PLOT x, y, ...: points. DRAW x, y, ...: lines from the last point on.
st_plot:
        call    point_arg
        push    de
        ex      de,hl
        ext     gfx_plot
        pop     de
        call    another
        jr      z,st_plot
        ret
st_draw:
        call    point_arg
        push    de
        ex      de,hl
        ext     gfx_line
        pop     de
        call    another
        jr      z,st_draw
        ret
; Z when a comma was at DE, which is behind it then.
another:
        ld      a,(de)
        cp      ','
        ret     nz
        inc     de
        ret

; CIRCLE x, y, radius
st_circle:
        call    point_arg
        push    hl
        push    bc
        call    comma
        int_arg
        ld      a,h
        cp      0x20                    ; 0 to 8191
        jp      nc,bad_value
        pop     bc
        ex      (sp),hl                 ; HL = x, stack: radius
        ex      de,hl
        ex      (sp),hl                 ; HL = radius, stack: text
        ext     gfx_circle
        pop     de
        ret

; PAINT x, y. It works in the low end of the machine stack, so the control stack goes behind the variables.
st_paint:
        call    point_arg
        push    de
        push    hl
        push    bc
        ld      hl,(CSP)
        ld      bc,-STACKLOW
        add     hl,bc
        ld      b,h
        ld      c,l
        call    need_memory
        push    bc
        ld      hl,STACKLOW
        ld      de,(VAREND)
        ldir
        pop     hl                      ; size
        pop     bc
        pop     de
        push    hl
        ext     gfx_paint
        pop     bc
        ld      hl,(VAREND)
        ld      de,STACKLOW
        ldir
        pop     de
        ret

; HL = x, BC = y.
point_arg:
        int_arg
        push    hl
        call    comma
        int_arg
        ld      b,h
        ld      c,l
        pop     hl
        ret

comma:  expect  ','
        ret

; LOCATE row, column: from 0
st_locate:
        call    two_bytes
        push    de
        ld      d,h
        ld      e,l
        call    con_locate
        pop     de
        ret

; H, L = two bytes at DE.
two_bytes:
        call    eval_byte
        push    af
        call    comma
        call    eval_byte
        pop     af
        ld      h,a
        ret

; SOUND frequency in Hz, duration in units of 20 ms [, volume 0 to 15]. Frequency 0 is a rest.
st_sound:
        call    eval_num
        call    fp_sign
        ld      hl,0
        jr      z,sound1                ; a rest
        jp      m,bad_value
        push    de
        ld      hl,clock
        call    fp_div
        ld      hl,half
        call    fp_add
        call    fp_toaddr               ; 4096 - pitch, rounded
        pop     de
        jp      c,bad_value
        ld      a,h
        cp      0x10
        jr      c,sound1
        jp      nz,bad_value
        ld      a,l
        or      a
        jp      nz,bad_value
sound1: push    hl
        call    comma
        int_arg
        bit     7,h
        jp      nz,bad_value
        push    hl
        ld      a,(de)
        cp      ','
        ld      a,15
        jr      nz,sound2
        inc     de
        call    eval_byte
        cp      16
        jp      nc,bad_value
sound2: pop     bc
        pop     hl
        push    de
        ex      de,hl
        ld      hl,4096
        or      a
        sbc     hl,de
        ld      d,a
        ld      a,h
        cp      0x10                    ; a rest, or above the highest: 195312.5 Hz
        ld      a,d
        jr      c,sound3
        xor     a
        ld      h,a
        ld      l,a
sound3: call    snd_tone
        pop     de
        ret
clock:  .byte   128 + 18, 0x3E, 0xBC, 0x20, 0, 0        ; 195312.5
half:   .byte   128, 0, 0, 0, 0, 0                      ; 0.5

st_beep:
        ld      a,7
        rst     RST_OUT
        ret

; POKE address, byte
st_poke:
        int_arg
        push    hl
        call    comma
        call    eval_byte
        pop     hl
        ld      (hl),a
        ret

; OUT port, byte
st_out: call    two_bytes
        ld      c,h
        out     (c),l
        ret

; CALL address: a routine in machine code, may change all registers
st_call:
        int_arg
        jp      with_a

; LOAD ["name"], SAVE ["name"], VERIFY ["name"]
st_load:
        call    tape_name
        call    must_end
        ext     keep_sum
        ld      a,1
        ld      (LOADING),a
        ld      hl,(RAMTOP)
        ld      de,-256                 ; for variables and strings
        add     hl,de
        ld      de,(PROGSTART)
        or      a
        sbc     hl,de
        ex      de,hl
        xor     a
        ext     tape_load
        jr      c,load_failed
        ld      hl,(PROGSTART)
        add     hl,de
        ld      (PROGEND),hl
        xor     a
        ld      (LOADING),a
        ext     check_program
        jp      ready
load_failed:
        push    af
        ext     compare_sum
        jr      z,load_kept
        ext     new_program             ; overwritten
load_kept:
        call    clear
        ld      h,a
        ld      l,a
        ld      (CURLINE),hl
        ld      (LOADING),a
        pop     af
        jp      raise_error

st_save:
        call    tape_area
        ext     tape_save
        jr      tape_done
st_verify:
        call    tape_area
        ext     tape_verify
tape_done:
        pop     de
        ret     nc
        cp      E_BREAK
        jp      nz,raise_error
        call    break_at
        ld      a,E_BREAK
        jp      raise_error

; IX = name, HL = program, DE = its length, A = 0; the text pointer stays on the stack.
tape_area:
        call    tape_name
        pop     bc
        push    de
        push    bc
        ld      hl,(PROGEND)
        ld      de,(PROGSTART)
        or      a
        sbc     hl,de
        ex      de,hl
        xor     a
        ret

; IX = the name at DE, "" if there is none; cut to 16 characters.
tape_name:
        xor     a
        ld      (TEXTBUF),a
        call    at_end
        jr      z,name1
        call    eval_str
        call    str_buffer
        xor     a
        ld      (TEXTBUF + 16),a
name1:  ld      ix,TEXTBUF
        ret
