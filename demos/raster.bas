10 REM *** RASTER: a drum of colour bars ***
20 REM Palette and border change while the picture is drawn: machine code
30 REM waits for the cursor interrupt and counts T-states from there.
40 REM A palette row lasts 245 T-states, a border row 218.
100 CLEAR &7B00:M=&7B00:S=&7C00:B=&7D00:R=&7E00:W=&7F00
110 GRAPHICS 4:BORDER 0:PALETTE 0,0:PALETTE 1,15:PALETTE 2,8:PALETTE 3,11:CLS
120 REM The big letters: each point of the text 5 by 5, on its shadow
130 INK 1:PRINT "RASTER":FOR Y=0 TO 9:X=0
140 IF X>47 THEN NEXT Y:GOTO 190
150 IF POINT(X,Y)=0 THEN X=X+1:GOTO 140
160 A=5*X+8
170 X=X+1:IF POINT(X,Y) THEN 170
180 C=5*X+7:D=5*Y+96:INK 2:A=A+4:C=C+4:D=D+4:GOSUB 450:INK 1:A=A-4:C=C-4:D=D-4:GOSUB 450:GOTO 140
190 LOCATE 0,0:INK 3:PRINT "  Each row has its own colours"
200 REM Machine code, then its tables
210 A=M:T=0:RESTORE 1000
220 READ D:IF D<256 THEN POKE A,D:A=A+1:T=T+D:GOTO 220
230 IF T<>D THEN PRINT "Error in the DATA lines":END
240 GOSUB 500:GOSUB 700:GOSUB 800
250 LOCATE 23,10:PRINT "Press a key";
260 POKE &7CFD,0:CALL M
270 K$=INKEY$:BORDER 1:PALETTE 0,1:PALETTE 1,15:PALETTE 2,14:PALETTE 3,12
280 GRAPHICS 2:INK 1:PAPER 0:CLS:END
450 PLOT A,D:DRAW C,D,C,D+1,A,D+1,A,D+2,C,D+2,C,D+3,A,D+3,A,D+4,C,D+4:RETURN
500 REM The sweep: 8 palette rows and 9 border rows in 1962 T-states,
510 REM all in machine code that is made here, each write at its time
520 REM T. The next palette write is due at P, that of the border at Q.
530 A=S:T=0:P=54:Q=101
540 FOR I=1 TO 17
550 IF P<Q THEN L=P:GOSUB 640:RESTORE 600:P=P+245:N=4:T=T+22 ELSE L=Q:GOSUB 640:RESTORE 610:Q=Q+218:N=5:T=T+26
560 FOR J=1 TO N:READ D:POKE A,D:A=A+1:NEXT J
570 NEXT I
580 L=1948:GOSUB 640:RESTORE 620
590 FOR J=1 TO 5:READ D:POKE A,D:A=A+1:NEXT J:RETURN
600 DATA 26,28,211,96:REM ld a,(de): inc e: out (0x60),a
610 DATA 126,44,135,211,0:REM ld a,(hl): inc l: add a,a: out (0),a
620 DATA 13,194,0,124,201:REM dec c: jp nz,SWEEP: ret
630 REM Waits until T is L: ld b,D: djnz to itself
640 D=INT((L-T-2)/13):IF D<1 THEN RETURN
650 POKE A,6:POKE A+1,D:POKE A+2,16:POKE A+3,254
660 A=A+4:T=T+13*D+2:RETURN
700 REM The shapes of the six bars: 15 rows each, behind and in front
710 RESTORE 770:FOR I=0 TO 5:READ D
720 FOR J=0 TO 7:H=D:F=D:IF J>2 THEN F=D+64
730 IF J>5 THEN F=85
740 IF J<2 THEN H=0
750 A=B+32*I:POKE A+J,H:POKE A+14-J,H:POKE A+16+J,F:POKE A+30-J,F
760 NEXT J:NEXT I:RETURN
770 DATA 4,20,16,17,1,5:REM red yellow green cyan blue magenta
800 REM The way of a bar around the drum; no bars yet
810 FOR I=0 TO 64:D=INT(122.5-98*COS(I*PI/128)):E=244-D
820 POKE W+I,D:POKE W+128-I,E:POKE W+128+I,E:IF I>0 THEN POKE W+256-I,D
830 NEXT I
840 FOR I=R TO R+255:POKE I,0:NEXT I:RETURN
1000 DATA 251,118,243:REM main ei: halt: di
1010 DATA 58,29,11,33,30,11:REM ld a,(0x0B1D): ld hl,0x0B1E
1020 DATA 190,32,122:REM cp (hl): jr nz,done
1030 DATA 58,8,11,183:REM ld a,(0x0B08): or a
1040 DATA 32,116,17,0,0:REM jr nz,done: ld de,0
1050 DATA 205,136,123:REM call cursor
1060 DATA 237,115,254,124:REM ld (STACK),sp
1070 DATA 49,240,126,33,0,0:REM ld sp,ROWS+240: ld hl,0
1080 DATA 6,27:REM ld b,27
1090 DATA 229,229,229:REM erase push hl: push hl: push hl
1100 DATA 229,16,250:REM push hl: djnz erase
1110 DATA 237,123,254,124:REM ld sp,(STACK)
1120 DATA 58,253,124,60:REM ld a,(PHASE): inc a
1130 DATA 50,253,124,14,0:REM ld (PHASE),a: ld c,0
1140 DATA 6,6,33,0,125:REM pass ld b,6: ld hl,SHAPES
1150 DATA 95,230,128,185:REM bar ld e,a: and 0x80: cp c
1160 DATA 32,22,197,213:REM jr nz,skip: push bc: push de
1170 DATA 229,15,15,15:REM push hl: rrca: rrca: rrca
1180 DATA 181,111,22,127:REM or l: ld l,a: ld d,SINE/256
1190 DATA 26,95,22,126:REM ld a,(de): ld e,a: ld d,ROWS/256
1200 DATA 1,15,0,237,176,225:REM ld bc,15: ldir: pop hl
1210 DATA 209,193:REM pop de: pop bc
1220 DATA 125,198,32,111:REM skip ld a,l: add a,32: ld l,a
1230 DATA 123,198,43,16,219:REM ld a,e: add a,43: djnz bar
1240 DATA 121,238,128,79:REM ld a,c: xor 0x80: ld c,a
1250 DATA 58,253,124,32,205:REM ld a,(PHASE): jr nz,pass
1260 DATA 219,89,230,16:REM wait in a,(0x59): and 0x10
1270 DATA 32,250,33,2,126:REM jr nz,wait: ld hl,ROWS+2
1280 DATA 17,22,126,14,27:REM ld de,ROWS+22: ld c,27
1290 DATA 211,7,205,0,124:REM out (7),a: call SWEEP
1300 DATA 17,128,15,205,136,123:REM ld de,0x0F80: call cursor
1310 DATA 195,0,123:REM jp main
1320 DATA 251,201:REM done ei: ret
1330 DATA 62,14,211,112:REM cursor ld a,14: out (0x70),a
1340 DATA 122,211,113,62,15:REM ld a,d: out (0x71),a: ld a,15
1350 DATA 211,112,123:REM out (0x70),a: ld a,e
1360 DATA 211,113,201:REM out (0x71),a: ret
1370 DATA 16736
