10 A$="it was the best of times it was the worst of times "
20 DIM W$(30),C%(30)
30 P=INSTR(A$," "):IF P=0 THEN 90
40 W$=LEFT$(A$,P-1):A$=MID$(A$,P+1)
50 FOR I=1 TO N
60 IF W$(I)=W$ THEN C%(I)=C%(I)+1:GOTO 30
70 NEXT
80 N=N+1:W$(N)=W$:C%(N)=1:GOTO 30
90 FOR I=1 TO N:PRINT W$(I);TAB(10);C%(I):NEXT
