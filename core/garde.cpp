#include "core/garde.h"

#include <array>
#include <string>

namespace zuma {
namespace {

struct TexteDeForme {
  std::string_view genre;
  std::string_view suffixe;
};

constexpr std::array<TexteDeForme, 5> kFormes{{
    {" de la méthode ", ""},
    {" de la procédure ", ""},
    {" de la propriété ", " en lecture"},
    {" de la propriété ", " en écriture"},
    {" de la propriété ", " en Lecture"},
}};

std::string Message(const Objet& objet, Forme forme, std::string_view nom, const Echec& échec) {
  const TexteDeForme& texte = kFormes[static_cast<std::size_t>(forme)];
  std::string message = "Erreur N°";
  message += std::to_string(échec.NuméroErreur());
  message += " (";
  message += échec.Description();
  message += ") à la ligne ";
  message += std::to_string(échec.Ligne());
  message += texte.genre;
  message += nom;
  message += texte.suffixe;
  message += " de l'objet ";
  message += objet.MotDeClasse();
  message += " (";
  message += objet.NomPourErreur();
  message += ").";
  return message;
}

}  // namespace

void Variables::Ajoute(std::string_view nom, Valeur valeur) {
  table_.push_back({"Variable " + std::string(nom), std::move(valeur)});
}

void Variables::AjouteLigne(std::string_view texte, Valeur valeur) {
  table_.push_back({std::string(texte), std::move(valeur)});
}

void Objet::Montre(std::string_view texte) const {
  plateforme_.messages->Montre(texte, {motDeClasse_, Key_, NomPourErreur()});
}

void détail::Signale(const Objet& objet, Forme forme, std::string_view nom, const Echec& échec,
                     const Variables& variables, SansErreur sans) {
  const std::string message = Message(objet, forme, nom, échec);
  if (sans == SansErreur::Montre && !objet.Erreur()) {
    objet.Montre(message);
    return;
  }
  objet.Erreur()->AjouteErreur(message, variables.Table());
}

}  // namespace zuma
