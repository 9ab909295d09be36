#!/usr/bin/env bash
# Checks what `make demo` printed: every analog input must show the points of the voltage at its
# terminals (65536 points for 10 V, one count of a 12-bit board allowed), and the inputs must move.
# verifie_demo.sh OUTPUT
set -euo pipefail

awk -F' [|] ' '
  $5 == "analog in" {
    split($7, points, " "); split($8, volts, " ")
    gsub(",", ".", points[1])
    ecart = points[1] - volts[1] * 6553.6
    if (ecart < 0) ecart = -ecart
    lus++
    if (ecart > 16.5) { faux++; print "wrong value: " $0 }
    cle = $2 $3 $4
    if (cle in premiere && premiere[cle] != points[1]) bouge[cle] = 1
    if (!(cle in premiere)) premiere[cle] = points[1]
  }
  $5 == "logic in" { logiques++ }
  /: no problem$/ { bonne++ }
  END {
    for (c in premiere) voies++
    for (c in bouge) mobiles++
    printf "demo: %d readings of %d analog inputs compared, %d wrong, %d inputs moved\n",
           lus, voies, faux, mobiles
    exit !(bonne == 1 && voies >= 10 && lus >= 3 * voies && faux == 0 && mobiles == voies && logiques > 0)
  }' "$1"
