#!/usr/bin/env bash
# Takes the writes of a stop out of the sources, one at a time, and shows that the table of the stop
# notices each: mutants_arret.sh [JOBS]. Works on a copy of the checkout; takes some minutes. Fails
# when a mutant is not noticed, or does not build.
set -euo pipefail
cd "$(dirname "$0")/.."
travaux=${1:-$(nproc)}
copie=$(mktemp -d)
trap 'rm -rf "$copie"' EXIT

# File, and the text whose removal (or replacement, behind =>) is the mutant.
mutants=(
  'core/chassis.cpp|tous(*Commandes(), arrête);'
  'core/chassis.cpp|tous(sorties, arrête);'
  'core/chassis.cpp|chacun([&] { Watchdog()->DéclencheAU(); });'
  'core/chassis.cpp|carte.DéclencheAU();
        carte.MetàJour();=>(void)carte;'
  'commands/commande.cpp|[&] { Envoie(TypeCommande_ == ENUM_TYPE_COMMANDE::ToutOuRien ? 0 : mdblValeurInitiale); },=>[&] {},'
  'logic/sortie_logique.cpp|ValeurCourante_ = ENUM_ETAT_LOGIQUE::Inactif;
    EcritLeNiveau();=>ValeurCourante_ = ENUM_ETAT_LOGIQUE::Inactif;'
  'logic/watchdog.cpp|wdt_01::WDT_Arme(LaCarte());
    arrêtAtteint_ = true;=>arrêtAtteint_ = true;'
  'boards/operations.cpp|[&] { return bloc.PiloteDe<Board>().EcritSorties(image); }=>[&] { (void)image; }'
  'instruments/thumler.cpp|EnvoiThumler("H");'
  'platform/linux/arret_du_chassis.cpp|if (déjà || chien.Adresse() != 0) RafraîchitLesCartes(chassis, chacun);=>if (false) RafraîchitLesCartes(chassis, chacun);'
  'platform/linux/arret_du_chassis.cpp|if (!déjà) chacun([&] { chassis.DéclencheAU(); });'
  'platform/linux/arret_du_chassis.cpp|EcritLesSorties(chassis, chacun);=>if (false) EcritLesSorties(chassis, chacun);'
)
git ls-files -z | xargs -0 cp --parents -t "$copie"
cd "$copie"
construit() { tools/construit.sh bench "$travaux" zuma_bench >construit.log 2>&1; }
construit
build/bench/zuma_bench --stop-table >table.log 2>&1 || { cat table.log; echo "the table fails as it is"; exit 1; }

survivants=0
for mutant in "${mutants[@]}"; do
  fichier=${mutant%%|*}
  texte=${mutant#*|}
  python3 - "$fichier" "$texte" <<'PY'
import sys
fichier, texte = sys.argv[1:]
avant, _, apres = texte.partition('=>')
source = open(fichier).read()
assert source.count(avant) == 1, f'{fichier}: not once: {avant}'
open(fichier + '.sain', 'w').write(source)
open(fichier, 'w').write(source.replace(avant, apres))
PY
  if ! construit; then
    etat="DOES NOT BUILD"
    survivants=$((survivants + 1))
  elif build/bench/zuma_bench --stop-table >table.log 2>table.err; then
    etat="SURVIVES"
    survivants=$((survivants + 1))
  else
    etat="noticed in $(grep -c ' / ' table.err || true) cells: $(grep -m1 ' / ' table.err || true)"
  fi
  printf '%s: %s\n    %s\n' "$fichier" "$(tr '\n' ' ' <<<"$texte")" "$etat"
  mv "$fichier.sain" "$fichier"
  touch "$fichier" # newer than what was built from the mutant
done
echo "$survivants of ${#mutants[@]} mutants not noticed"
exit "$survivants"
