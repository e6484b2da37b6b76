; The variables of the number routines that others use; math.inc tells where all of them lie.
        .include "math/math.inc"
        .globl  FACC, FTEXT, RNDSEED
