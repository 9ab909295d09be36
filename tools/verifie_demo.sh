#!/usr/bin/env bash
# Checks what `make demo` printed: every analog input must show the points of the voltage at its
# terminals (65536 points for 10 V, one count of a 12-bit board and the noise allowed), the inputs
# must move, no stop may fire, and the compression test must break the specimen at the rate asked
# (60 kN on a cylinder of 50 mm are 30.56 MPa). On the other frames the inputs must move, and the
# wrong check sums must raise and clear the error indicator of every Modbus block. The test from Python must
# find the strength of that specimen within 0.1 %, and its modulus: 4.9e8 N/m over 100 mm are 24.96 GPa.
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
  / [|] stop [|] / { arrets++ }
  /^A stop: D.*passement dangereux du capteur Force 100 kN/ { causes++ }
  /^  When did the outputs come to rest[?] in the pass of the stop: command Servovalve/ { repos++ }
  /^Its black box page: picture .*stop.svg$/ { pages++ }
  /^Strength .* MPa, modulus .* GPa: picture .*tensile.png$/ {
    resistance = $0; sub(/^Strength */, "", resistance); resistance += 0
    module = $0; sub(/.*modulus */, "", module); module += 0
    python += resistance > 30.527 && resistance < 30.589 && module > 24.8 && module < 25.1
  }
  /: no problem$/ { bonne++ }
  /^Compression test: specimen broken$/ { rompu++ }
  /^Frame [345] / {
    split($0, mots, ": ")
    split(mots[2], nombres, " ")
    attendus = $0 ~ /^Frame 3/ ? 25 : 13
    if (nombres[1] >= attendus) chassis++; else print "demo: too few inputs moved: " $0
    if ($0 ~ /^Frame 3/ && $0 !~ /rose 6 times and fell 6 times/) { faux++; print "demo: " $0 }
  }
  /maximum force/ { force = $0; sub(/.*force */, "", force); force += 0 }
  /maximum stress/ { contrainte = $0; sub(/.*stress */, "", contrainte); contrainte += 0 }
  /rate held/ { tenue = $0; sub(/.*held */, "", tenue); tenue += 0 }
  END {
    for (c in premiere) voies++
    for (c in bouge) mobiles++
    printf "demo: %d readings of %d analog inputs compared, %d wrong, %d inputs moved\n",
           lus, voies, faux, mobiles
    printf "demo: break at %.2f kN, %.2f MPa, rate %.3f MPa/s\n", force, contrainte, tenue
    if (arrets > 0) print "demo: a stop fired"
    essai = rompu == 1 && force > 59 && force < 61 && contrainte > 30 && contrainte < 31.1 \
            && tenue > 0.57 && tenue < 0.63
    if (causes != 1 || repos != 1 || pages != 1) { faux++; print "demo: the page of the stop is missing or wrong" }
    if (python != 1) { faux++; print "demo: the test from Python is missing or wrong" }
    exit !(essai && arrets == 0 && bonne == 4 && chassis == 3 && voies >= 10 && lus >= 3 * voies && faux == 0 && mobiles == voies && logiques > 0)
  }' "$1"
