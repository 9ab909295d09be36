#include "base/garde.h"

#include <array>
#include <string>

#include "platform/plateforme.h"

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

std::string Début(const Echec& échec) {
  std::string début = "Erreur N°";
  début += std::to_string(échec.NuméroErreur());
  début += " (";
  début += échec.Description();
  début += ')';
  return début;
}

std::string Message(const Objet& objet, Forme forme, std::string_view nom, std::string_view début,
                    int ligne) {
  const TexteDeForme& texte = kFormes[static_cast<std::size_t>(forme)];
  std::string message(début);
  message += " à la ligne ";
  message += std::to_string(ligne);
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
  // Held: who hears of the failure may let the object go, or give it another record.
  const Ref<ZED_Erreur> registre = objet.Erreur();
  Plateforme& plateforme = objet.LaPlateforme();
  const SuiviDesEchecs::Signature signature{registre.Brut(), &objet, nom, échec.Ligne(),
                                            échec.NuméroErreur()};
  const bool suivi = registre && plateforme.échecs.enPasse;
  if (suivi && plateforme.échecs.Répète(signature, plateforme.heureDePasse)) return;
  const std::string message = Message(objet, forme, nom, Début(échec), échec.Ligne());
  if (sans == SansErreur::Montre && !registre) {
    objet.Montre(message);
    return;
  }
  if (suivi) plateforme.échecs.Retient(signature, plateforme.heureDePasse, message, registre);
  registre->AjouteErreur(message, variables.Table());
}

void Consigne(const Objet& objet, Forme forme, std::string_view nom, std::string_view début,
              std::source_location où) {
  objet.Erreur()->AjouteErreur(Message(objet, forme, nom, début, static_cast<int>(où.line())),
                               TableVariables(1));
}

}  // namespace zuma
