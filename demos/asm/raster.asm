'A raster effect: bars of colour that wander down behind the text.
'In the assembler's window: Compile, RUN, RUN CPU. Any key ends it.
'As a cassette file: quollasm raster.asm -o raster.cas
'
'The picture takes the colours of a row from what the palette holds at 245 T-states times
'the row's number. So a loop of 245 T-states that begins with the frame gives each row its own.

constr:  equ $C083       'calls of the system: prints the text at HL
locate:  equ $C08C       'cursor to row D, column E
keypoll: equ $C095       'NZ when a key has been pressed
gfxmode: equ $C09B       'mode A, clears the screen
palette: equ $C0A4       'register A becomes colour C
table:   equ $3000       'a colour for each of 256 rows

'BASIC's program: 10 CALL 10000
org 6639
db 8,10,0,$A1,7,$10,$27,0,0

org 10000
xor a
call @gfxmode
ld a,1
ld c,15
call @palette            'white text
ld de,$0A13              'row 10, column 19
call @locate
ld hl,@text
call @constr

'Eight bars of 32 rows: dark, bright and dark again.
ld de,@table
ld hl,@colours
bar:
ld a,(hl)
ld b,8
call @fill
or $40                   'the bright bit
ld b,16
call @fill
ld a,(hl)
ld b,8
call @fill
inc hl
ld a,e
or a
jr nz,@bar

frame:
halt                     'until the interrupt below the picture has been served
di
ld bc,79                 'and on to the beginning of the next frame
delay:
dec bc
ld a,b
or c
jr nz,@delay
ld hl,@phase
dec (hl)                 'the bars move down by a row
ld l,(hl)
ld h,$30
ld c,220
row:
ld a,(hl)                '7 T-states
out ($60),a              '11
inc l                    '4
ld b,15                  '7
spend:
djnz @spend              '190
inc de                   '6
nop                      '4
dec c                    '4
jr nz,@row               '12
xor a                    'below the bars it is black
out ($60),a
ei
call @keypoll
jr z,@frame
rst $0                   'a warm start: back to BASIC

'B bytes A at DE.
fill:
ld (de),a
inc de
djnz @fill
ret

phase:
db 0

'Red, yellow, green, cyan, blue, violet, grey and nothing: red is 4, green 16, blue 1.
colours:
db 4,20,16,17,1,5,21,0

text:
db "Each row has a color of its own"
db 0
