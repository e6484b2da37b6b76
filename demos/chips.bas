10 REM *** CHIPS: a tune for each of the sound card's six chips ***
20 REM In the DATA a note is a letter (a small one is sharp) and its
30 REM octave; .. lets it sound on, -- ends it. A tune has a title, the
40 REM frames (20 ms) of a step, its last voice and its bars; then for
50 REM each bar a text for each voice. The last may have commands.
60 REM Each chip has three routines: silence and settings; note N (0
70 REM is a rest) of voice V; what changes in a frame.
100 DIM S(103),F(88),P(8),A(8),B$(8),L(8),C(8),O(5),R(4),Q(4),Z(4)
110 A$="CcDdEFfGgAaB":FOR I=0 TO 11:S(ASC(MID$(A$,I+1)))=I:NEXT I
120 FOR I=24 TO 88:F(I)=440*2^((I-57)/12):NEXT I
130 FOR I=0 TO 8:P(I)=2^I:NEXT I
200 GRAPHICS 2:PRINT "A tune for each chip of the sound card (I/O card 2)":PRINT
210 FOR X=1 TO 6:GOSUB 800:READ T$:PRINT X;" ";T$:NEXT X
220 PRINT:PRINT "Press 1 to 6; 0 is the end. A key ends a tune."
230 K$=INKEY$:IF K$="" THEN 230
240 IF K$="0" THEN CLS:END
250 X=VAL(K$):IF X<1 OR X>6 THEN 230
260 ON X GOSUB 1000,2000,3000,4000,5000,6000
270 GOSUB 800:READ T$,U,M,G:CLS:PRINT T$:PRINT
280 T=TIME+1
290 FOR B=1 TO G:FOR V=0 TO M:READ B$(V):NEXT V:PRINT B;
300 FOR I=1 TO LEN(B$(0)) STEP 2:FOR V=M TO 0 STEP -1
310 C=ASC(MID$(B$(V),I)):IF C=46 THEN 340
320 IF C=45 THEN N=0 ELSE N=S(C)+12*VAL(MID$(B$(V),I+1,1))
330 ON X GOSUB 1100,2100,3100,4100,5100,6100
340 NEXT V:FOR F=1 TO U:ON X GOSUB 1180,2180,3180,4180,5180,6180
350 IF TIME<T THEN 350
360 T=T+1:NEXT F:IF INKEY$<>"" THEN 380
370 NEXT I:NEXT B
380 ON X GOSUB 1000,2000,3000,4000,5000,6000:GOTO 200
800 ON X GOTO 810,820,830,840,850,860
810 RESTORE 1200:RETURN
820 RESTORE 2200:RETURN
830 RESTORE 3200:RETURN
840 RESTORE 4200:RETURN
850 RESTORE 5200:RETURN
860 RESTORE 6200:RETURN
1000 REM SN76489, port 48. A tone is 128, 160 or 192 with four bits of
1010 REM its period, then six more; attenuations are 144, 176, 208, 240
1020 FOR V=0 TO 3:OUT 48,159+32*V:A(V)=15:NEXT V
1030 L(0)=1:L(1)=6:L(2)=2:Q=15:Z=0:RESTORE 1050
1040 FOR I=1 TO 4:READ R(I),Q(I),Z(I):NEXT I:RETURN
1050 DATA 0,7,3,0,7,1,1,2,1,2,0,4:REM rate, attenuation, its rise
1100 IF V=3 THEN 1140
1110 IF N=0 THEN A(V)=15:OUT 48,159+32*V:RETURN
1120 P=INT(3579545/32/F(N)+0.5):H=INT(P/16)
1130 OUT 48,128+32*V+P-16*H:OUT 48,H:OUT 48,144+32*V+L(V):A(V)=L(V):RETURN
1140 D=INSTR("HOSK",CHR$(C)):OUT 48,228+R(D):Q=Q(D):Z=Z(D):RETURN
1180 OUT 48,240+Q:Q=Q+Z:IF Q>15 THEN Q=15
1185 V=F MOD 3:OUT 48,144+32*V+A(V):IF A(V)<L(V)+5 THEN A(V)=A(V)+1
1190 RETURN
2000 REM AY-3-8910, register to port 58, value to port 59. The envelope
2010 REM P plucks a note, T lets chords tremble, B buzzes as the bass
2020 FOR V=8 TO 10:OUT 58,V:OUT 59,0:NEXT V:OUT 58,7:OUT 59,255:E=9:Q=0:RETURN
2100 IF V=3 THEN 2150
2110 IF V=2 AND M$<>"T" THEN 2170
2115 IF N=0 THEN OUT 58,8+V:OUT 59,0:RETURN
2120 P=INT(111861/F(N)+0.5):H=INT(P/256):OUT 58,2*V:OUT 59,P-256*H:OUT 58,2*V+1:OUT 59,H:OUT 58,8+V
2125 IF M$="T" THEN OUT 59,16:RETURN
2130 IF V=0 AND M$="P" THEN OUT 59,16:E=9-E:OUT 58,13:OUT 59,E:RETURN
2135 IF V=0 THEN OUT 59,13:RETURN
2140 IF M$="P" THEN OUT 59,10:RETURN
2145 OUT 59,16:P=INT(P/8+0.5):GOTO 2160
2150 M$=CHR$(C):OUT 58,7:OUT 59,28:P=3496:E=8:IF M$="T" THEN OUT 59,56:P=1165:E=10
2155 OUT 58,13:OUT 59,E:IF M$="P" THEN E=9
2160 H=INT(P/256):OUT 58,11:OUT 59,P-256*H:OUT 58,12:OUT 59,H:RETURN
2170 D=INSTR("HSK",CHR$(C)):OUT 58,6:OUT 59,14*D-12:Q=5+2*D:RETURN
2180 IF M$="T" THEN RETURN
2190 OUT 58,10:OUT 59,Q:Q=Q-2:IF Q<0 THEN Q=0:RETURN ELSE RETURN
3000 REM SAA1099, register to port 51, value to port 50. Voices 0 to 3
3010 REM are channels 0 (left), 3 (right), 4, and 2, which goes round by
3020 REM envelope 0: channel 1 is its clock. Noise comes on channel 5
3030 FOR I=0 TO 5:OUT 51,I:OUT 50,0:O(I)=0:NEXT I:RESTORE 3060:Q=0
3040 FOR I=0 TO 4:READ C(I),L(I):NEXT I
3050 FOR I=1 TO 8:READ R,D:OUT 51,R:OUT 50,D:NEXT I:RETURN
3060 DATA 0,15,3,240,4,204,2,221,5,0:REM channel, levels
3070 DATA 9,0,16,0,20,29,21,32,22,0,24,139,25,0,28,1
3100 IF V=4 THEN 3150
3110 W=C(V):OUT 51,W:IF N=0 THEN OUT 50,0:RETURN
3120 OUT 50,L(V):O=INT((N-11)/12):O(W)=O:OUT 51,8+W
3130 OUT 50,INT(511.5-15625*1.00227*P(O)/F(N)):O=INT(W/2)
3140 OUT 51,16+O:OUT 50,O(2*O)+16*O(2*O+1):RETURN
3150 Q=12:R=1:IF CHR$(C)="R" THEN R=16
3160 RETURN
3180 OUT 51,5:OUT 50,INT(Q)*R:Q=Q*0.6:RETURN
4000 REM YM3812, register to port 52, value to port 53. Voice V has the
4010 REM operators C(V) and C(V)+3; A to D give the lead another sound
4020 RESTORE 4060:FOR I=1 TO 4:READ R(I):NEXT I:FOR V=0 TO 4:READ W,L:C(V)=W
4030 OUT 52,176+V:OUT 53,0:OUT 52,32+W:OUT 53,1:OUT 52,35+W:OUT 53,1
4040 OUT 52,64+W:OUT 53,12:OUT 52,67+W:OUT 53,L:NEXT V:D=40:E=9:RETURN
4060 DATA 1,2,3,5,0,1,1,6,2,6,8,6,9,2:REM multipliers; voices' operators, levels
4100 IF V=5 THEN 4150
4110 OUT 52,176+V:IF N=0 THEN OUT 53,0:RETURN
4120 O=INT((N-7)/12):P=INT(F(N)*21.23/P(O)+0.5):H=INT(P/256)
4130 OUT 53,32+4*O+H:OUT 52,160+V:OUT 53,P-256*H:IF V=0 THEN D=3:E=1
4140 RETURN
4150 OUT 52,32:OUT 53,R(INSTR("ABCD",CHR$(C))):RETURN
4180 OUT 52,64:OUT 53,INT(D):D=D+1.5:IF D>40 THEN D=40
4190 OUT 52,67:OUT 53,INT(E):E=E+0.25:IF E>9 THEN E=9:RETURN ELSE RETURN
5000 REM YM2413, register to port 60, value to port 61. All volumes go
5010 REM down by one in a step, one voice's in each of its frames
5020 FOR V=0 TO 8:OUT 60,32+V:OUT 61,0:OUT 60,48+V:OUT 61,0:A(V)=0:NEXT V:RETURN
5100 OUT 60,32+V:IF N=0 THEN OUT 61,0:A(V)=0:RETURN
5110 O=INT((N-7)/12):P=INT(F(N)*10.6383/P(O)+0.5):H=INT(P/256)
5120 OUT 61,16+2*O+H:OUT 60,16+V:OUT 61,P-256*H
5130 OUT 60,48+V:OUT 61,31+16*V:A(V)=15:RETURN
5180 V=F-1:IF V>8 THEN RETURN
5190 IF A(V)>6 THEN A(V)=A(V)-1:OUT 60,48+V:OUT 61,A(V)+16*V+16
5195 RETURN
6000 REM SID 6581, register to port 56, value to port 57. A gate is
6010 REM open two frames after its note began, since the chip looks at
6015 REM it once in a frame. L low pass, H high pass, O none, Z the sweep
6020 FOR I=0 TO 24:OUT 56,I:OUT 57,0:NEXT I:RESTORE 6060:J=0:K=0:W=2048:E=60
6030 FOR V=0 TO 2:READ C(V),H,L:OUT 56,7*V+5:OUT 57,H:OUT 56,7*V+6:OUT 57,L:A(V)=0:NEXT V
6040 FOR I=1 TO 3:READ R(I),Q(I):NEXT I:OUT 56,24:OUT 57,15:RETURN
6060 DATA 64,25,168,32,8,134,16,7,0:REM wave, attack and decay, sustain and release
6070 DATA 0,15,2,31,1,79:REM voices to filter, mode and volume
6100 IF V=3 THEN 6150
6110 OUT 56,7*V+4:OUT 57,C(V):A(V)=0:IF N=0 THEN RETURN
6120 P=INT(F(N)*17.32+0.5):H=INT(P/256):OUT 56,7*V:OUT 57,P-256*H
6130 OUT 56,7*V+1:OUT 57,H:A(V)=1:J=TIME+2:RETURN
6150 IF CHR$(C)="Z" THEN K=2266:C(2)=32:OUT 56,20:OUT 57,240:RETURN
6160 K=0:C(2)=16:OUT 56,20:OUT 57,0:D=INSTR("OLH",CHR$(C))
6170 OUT 56,23:OUT 57,R(D):OUT 56,24:OUT 57,Q(D):RETURN
6180 IF J=0 OR TIME<J THEN 6190
6185 J=0:FOR V=0 TO 2:IF A(V) THEN A(V)=0:OUT 56,7*V+4:OUT 57,C(V)+1
6188 NEXT V
6190 W=W+E:IF W>3600 OR W<500 THEN E=-E
6192 H=INT(W/256):OUT 56,2:OUT 57,W-256*H:OUT 56,3:OUT 57,H:IF K=0 THEN RETURN
6194 K=K*1.02:H=INT(K/256):OUT 56,14:OUT 57,INT(K)-256*H:OUT 56,15:OUT 57,H:RETURN
1200 DATA "SN76489: three tones and a noise that drums",6,3,8
1210 DATA E5....G5....E5..D5..C5..D5..E5..,A4C5E5C5A4C5E5C5A4C5E5C5A4C5E5C5,A2..--A2....A3..A2..--A2....A3..,K...H...S...H...K...H.K.S...H.H.
1220 DATA C5....A4....C5..D5..C5..A4......,A4C5F5C5A4C5F5C5A4C5F5C5A4C5F5C5,F3..--F3....C3..F3..--F3....C3..,K...H...S...H...K...H.K.S...O...
1230 DATA G4....C5....E5..G5..E5..D5..C5..,G4C5E5C5G4C5E5C5G4C5E5C5G4C5E5C5,C3..--C3....C4..C3..--C3....G3..,K...H...S...H...K...H.K.S...H.H.
1240 DATA D5....B4....D5..G5..F5..E5..D5..,G4B4D5B4G4B4D5B4G4B4D5B4G4B4D5B4,G3..--G3....D3..G3..--G3....D3..,K...H...S...H...K...H.K.S...O...
1250 DATA E5....A5....G5..E5..D5..E5..G5..,A4C5E5C5A4C5E5C5A4C5E5C5A4C5E5C5,A2..--A2....A3..A2..--A2....A3..,K...H...S...H...K...H.K.S...H.H.
1260 DATA A5....G5....F5..E5..D5..C5..D5..,A4C5F5C5A4C5F5C5A4C5F5C5A4C5F5C5,F3..--F3....C3..F3..--F3....C3..,K...H...S...H...K...H.K.S...O...
1270 DATA E5..D5..B4..G4..B4..D5..G5..F5..,G4B4D5B4G4B4D5B4G4B4D5B4G4B4D5B4,G3..--G3....D3..G3..--G3....D3..,K...H...S...H...K...H.K.S...H.H.
1280 DATA E5......A4..C5..E5..A5......--..,A4C5E5C5A4C5E5C5A4C5E5C5A4C5E5C5,A2..--A2....A3..A2..--A2....A3..,K...K...S...S...S.S.S.S.S.S.O...
2200 DATA "AY-3-8910: one envelope plucks trembles buzzes",7,3,12
2210 DATA D5..F5..A5..D6..A5..F5..E5..D5..,D3..........A3..D3......A2......,K.......H.......S.......H...H...,P...............................
2220 DATA D5..F5..a5..D6..a5..F5..D5..C5..,a2..........F3..a2......F3......,K.......H.......S.......H...H...,................................
2230 DATA C5..F5..A5..C6..A5..F5..G5..A5..,F3..........C3..F3......C3......,K.......H.......S.......H...H...,................................
2240 DATA c5..E5..A5..c6..A5..G5..F5..E5..,A2..........E3..A2......A3..G3..,K.......H.......S.......S...S...,................................
2250 DATA D5..............F5..............,A4..............A4..............,F4..............D4..............,T...............................
2260 DATA G5..............F5..............,D5..............D5..............,a4..............a4..............,................................
2270 DATA E5..............c5..............,c5..............A4..............,A4..............E4..............,................................
2280 DATA D5..........................--..,A4..........................--..,F4..........................--..,................................
2290 DATA A4......D5..E5..F5......E5..D5..,D2..D2..D3..D2..D2..C3..D3..A2..,K.......S.......K...K...S.......,B...............................
2300 DATA C5......a4..A4..a4......D5..C5..,a2..a2..a3..a2..a2..A2..a2..F2..,K.......S.......K...K...S.......,................................
2310 DATA A4......C5..F5..A5......G5..F5..,F2..F2..F3..F2..F2..E3..F3..C3..,K.......S.......K...K...S.......,................................
2320 DATA E5......c5..E5..D5..........--..,A2..A2..A3..G2..D2..........--..,K.......S...S...S...............,................................
3200 DATA "SAA1099: a canon from left and right",8,4,9
3210 DATA C5......A4......B4......C5......,--..............................,C3......F3......G3......C3......,--..............................,................................
3220 DATA E5......F5......D5......E5......,C5......A4......B4......C5......,C3..G3..F3..A3..G3..G2..C3..G2..,--..............................,L.......R.......L.......R...L.R.
3230 DATA G5..E5..C6..A5..B5..G5..G5......,E5......F5......D5......E5......,C3......F3......G3......C3......,G4......A4......G4......E4......,L.......R.......L.......R...L.R.
3240 DATA C6..G5E5F5..A5C6B5..D5..C5......,G5..E5..C6..A5..B5..G5..G5......,C3..G3..F3..A3..G3..G2..C3..G2..,E4......C5......D5......G4......,L.......R.......L.......R...L.R.
3250 DATA E5D5E5G5F5E5F5A5G5F5D5B4C5..G4..,C6..G5E5F5..A5C6B5..D5..C5......,C3......F3......G3......C3......,G4......A4......G4......E4......,L.......R.......L.......R...L.R.
3260 DATA C5E5G5C6A5F5C5F5D5G5B5G5E5..C5..,E5D5E5G5F5E5F5A5G5F5D5B4C5..G4..,C3..G3..F3..A3..G3..G2..C3..G2..,E4......C5......D5......G4......,L.......R.......L.......R...L.R.
3270 DATA G5....E5F5....C5D5....B4C5......,C5E5G5C6A5F5C5F5D5G5B5G5E5..C5..,C3......F3......G3......C3......,G4......A4......G4......E4......,L.......R.......L.......R...L.R.
3280 DATA C5..............B4......C5..--..,G5....E5F5....C5D5....B4C5......,C3..G3..F3..A3..G3..G2..C3..G2..,E4......C5......D5......G4......,L.......R.......L.......R...L.R.
3290 DATA --..............................,C5..............B4......C5..--..,--..............G2......C3..--..,G4......A4......G4......E4..--..,L.......R.......L...............
4200 DATA "YM3812: two operators in four timbres",7,5,8
4210 DATA B4....G4..A4..B4....E5..D5..B4..,--..B3..--..B3..--..B3..--..B3..,--..E4..--..E4..--..E4..--..E4..,--..G4..--..G4..--..G4..--..G4..,E2..E2..E3..E2..E2..E2..B2..D3..
4220 DATA A...............................
4230 DATA C5....G4..A4..C5....E5..D5..C5..,--..C4..--..C4..--..C4..--..C4..,--..E4..--..E4..--..E4..--..E4..,--..G4..--..G4..--..G4..--..G4..,C3..C3..C4..C3..C3..C3..G3..B2..
4240 DATA A...............................
4250 DATA D5....B4..C5..D5....G5..f5..D5..,--..B3..--..B3..--..B3..--..B3..,--..D4..--..D4..--..D4..--..D4..,--..G4..--..G4..--..G4..--..G4..,G2..G2..G3..G2..G2..G2..D3..f2..
4260 DATA B...............................
4270 DATA A4....f4..A4..D5....E5..D5..A4..,--..A3..--..A3..--..A3..--..A3..,--..D4..--..D4..--..D4..--..D4..,--..f4..--..f4..--..f4..--..f4..,D3..D3..D4..D3..D3..D3..A3..f3..
4280 DATA B...............................
4290 DATA E5....D5..B4..G4....B4..D5..E5..,--..B3..--..B3..--..B3..--..B3..,--..E4..--..E4..--..E4..--..E4..,--..G4..--..G4..--..G4..--..G4..,E2..E2..E3..E2..E2..E2..B2..D3..
4300 DATA C...............................
4310 DATA G5....E5..D5..C5....D5..E5..G5..,--..C4..--..C4..--..C4..--..C4..,--..E4..--..E4..--..E4..--..E4..,--..G4..--..G4..--..G4..--..G4..,C3..C3..C4..C3..C3..C3..G3..B2..
4320 DATA C...............................
4330 DATA f5....E5..D5..A4....D5..E5..f5..,--..A3..--..A3..--..A3..--..A3..,--..D4..--..D4..--..D4..--..D4..,--..f4..--..f4..--..f4..--..f4..,D3..D3..D4..D3..D3..D3..A3..f3..
4340 DATA D...............................
4350 DATA E5..............B4......E5..--..,B3..............B3......B3..--..,E4..............E4......E4..--..,G4..............G4......G4..--..,E2..............E2......E2..--..
4360 DATA D...............................
5200 DATA "YM2413: nine voices come in one after the other",10,8,13
5210 DATA A2..............,A3..A3..A3..A3..,................,................,................,................,................,................,................
5220 DATA F2..............,F3..F3..F3..F3..,F4..............,................,................,................,................,................,................
5230 DATA C3..............,C4..C4..C4..C4..,E4..............,G3..............,................,................,................,................,................
5240 DATA G2..............,G3..G3..G3..G3..,D4..............,B3..............,G4..............,................,................,................,................
5250 DATA A2..............,A3..A3..A3..A3..,E4..............,C4..............,A4..............,A4C5E5C5A4C5E5C5,................,................,................
5260 DATA F2..............,F3..F3..F3..F3..,F4..............,C4..............,A4..............,F4A4C5A4F4A4C5A4,C5......A4......,................,................
5270 DATA C3..............,C4..C4..C4..C4..,E4..............,G3..............,G4..............,G4C5E5C5G4C5E5C5,G4......C5......,G5..E5..C5......,................
5280 DATA G2..............,G3..G3..G3..G3..,D4..............,B3..............,G4..............,G4B4D5B4G4B4D5B4,B4......D5......,D5..E5..G5......,................
5290 DATA A2..............,A3..A3..A3..A3..,E4..............,C4..............,A4..............,A4C5E5C5A4C5E5C5,E5......D5......,A5..G5..E5......,C6......E6......
5300 DATA F2..............,F3..F3..F3..F3..,F4..............,C4..............,A4..............,F4A4C5A4F4A4C5A4,C5......A4......,F5..E5..C5......,A5......C6......
5310 DATA C3..............,C4..C4..C4..C4..,E4..............,G3..............,G4..............,G4C5E5C5G4C5E5C5,G4......C5......,G5..E5..C5......,E6......D6..C6..
5320 DATA G2..............,G3..G3..G3..G3..,D4..............,B3..............,G4..............,G4B4D5B4G4B4D5B4,B4......D5......,D5..E5..G5......,B5..............
5330 DATA A2..........--..,A3..........--..,E4..........--..,C4..........--..,A4..........--..,C5..........--..,E5..........--..,A5..........--..,E6..........--..
6200 DATA "SID 6581: sweeps and filter",6,3,9
6210 DATA --..............................,--..............................,C3..............................,Z...............................
6220 DATA C5......d5..D5..C5..G4......a4..,C2..C3..C2..C3..C2..C3..a2..C3..,C4..d4..G4..C5..C4..d4..G4..C5..,L...............................
6230 DATA C5......d5..F5..d5..C5......G4..,g2..g3..g2..g3..g2..g3..d3..g3..,C4..d4..g4..C5..C4..d4..g4..C5..,................................
6240 DATA a4......d5..G5..F5..d5......D5..,d2..d3..d2..d3..d2..d3..a2..d3..,a3..d4..G4..a4..a3..d4..G4..a4..,O...............................
6250 DATA D5......F5..a5..g5..F5......D5..,a2..a3..a2..a3..a2..a3..F3..a3..,a3..D4..F4..a4..a3..D4..F4..a4..,................................
6260 DATA d5......G5..F5..d5..C5......D5..,C2..C3..C2..C3..C2..C3..a2..C3..,C4..d4..G4..C5..C4..d4..G4..C5..,L...............................
6270 DATA d5..C5..g4......C5..d5..g5......,g2..g3..g2..g3..g2..g3..d3..g3..,C4..d4..g4..C5..C4..d4..g4..C5..,................................
6280 DATA F5..D5..a4......D5..F5..a5..g5..,a2..a3..a2..a3..a2..a3..F3..a3..,a3..D4..F4..a4..a3..D4..F4..a4..,H...............................
6290 DATA G5..........d5..C5..........--..,C2..........C3..C2..........--..,C4..d4..G4..C5..G4..........--..,O...............................
