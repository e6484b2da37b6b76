10 DIM N$(19),T$(9):DEFINT A-Z
20 FOR I=0 TO 19:READ N$(I):NEXT:FOR I=2 TO 9:READ T$(I):NEXT
30 ON ERROR GOTO 200
40 READ V:PRINT V;:GOSUB 100:PRINT W$:GOTO 40
100 W$="":IF V<100 THEN X=V:GOTO 130
110 W$=N$(V\100)+" hundred":X=V MOD 100:IF X=0 THEN RETURN
120 W$=W$+" and "
130 IF X<20 THEN W$=W$+N$(X):RETURN
140 W$=W$+T$(X\10):IF X MOD 10 THEN W$=W$+"-"+N$(X MOD 10)
150 RETURN
200 IF ERR=4 THEN END
210 ON ERROR GOTO 0
300 DATA zero,one,two,three,four,five,six,seven,eight,nine,ten,eleven,twelve
310 DATA thirteen,fourteen,fifteen,sixteen,seventeen,eighteen,nineteen
320 DATA twenty,thirty,forty,fifty,sixty,seventy,eighty,ninety
330 DATA 0,7,13,20,45,100,101,219,340,999
