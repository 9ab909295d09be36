#include "logic/lecteur_clavier.h"

#include <array>

namespace zuma::clavier {
namespace {

constexpr std::string_view kAlphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::array<std::string_view, 12> kFonctions{"F1", "F2", "F3", "F4",  "F5",  "F6",
                                                      "F7", "F8", "F9", "F10", "F11", "F12"};

// Page up has no name, page down has one: configurations are written for that.
constexpr std::array<std::string_view, 256> kNoms = [] {
  std::array<std::string_view, 256> noms{};
  noms[touche::kRetour] = "RETURN";
  noms[touche::kEchappement] = "ESCAPE";
  noms[touche::kEspace] = "SPACE";
  noms[touche::kPageSuivante] = "NEXT";
  noms[touche::kFin] = "END";
  noms[touche::kDébut] = "HOME";
  noms[touche::kGauche] = "LEFT";
  noms[touche::kHaut] = "UP";
  noms[touche::kDroite] = "RIGHT";
  noms[touche::kBas] = "DOWN";
  noms[touche::kSuppression] = "DELETE";
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
    noms[static_cast<std::uint8_t>(kAlphabet[i])] = kAlphabet.substr(i, 1);
  }
  for (std::size_t i = 0; i < kFonctions.size(); ++i) noms[touche::kF1 + i] = kFonctions[i];
  return noms;
}();

constexpr std::int32_t Poids(std::size_t code) noexcept {
  if (code == touche::kMajuscule) return kAvecMajuscule;
  if (code == touche::kContrôle) return kAvecContrôle;
  if (code == touche::kAlt) return kAvecAlt;
  return 0;
}

}  // namespace

void LitToucheEnfoncée(const EtatClavier& état, std::string_view& nom,
                       std::int32_t* modificateurs) noexcept {
  nom = {};
  std::int32_t poids = 0;
  bool trouvée = false;
  for (std::size_t code = 0; code < état.size(); ++code) {
    if ((état[code] & kToucheEnfoncée) == 0) continue;
    if (!trouvée) {
      nom = kNoms[code];
      trouvée = true;
    } else if (Poids(code) != 0) {
      poids += Poids(code);
    } else {
      nom = {};
      poids = 0;
      break;
    }
  }
  if (modificateurs != nullptr) *modificateurs = poids;
}

void LâcheLesTouches(Clavier& clavier) {
  const EtatClavier présent = clavier.LitEtat();
  EtatClavier lâché{};
  for (const std::uint8_t verrou : {touche::kVerrMaj, touche::kVerrNum, touche::kArrêtDéfil}) {
    lâché[verrou] = présent[verrou];
  }
  clavier.EcritEtat(lâché);
}

}  // namespace zuma::clavier
