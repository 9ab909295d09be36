#include "base/echec.h"

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace zuma {
namespace {

struct Libellé {
  Numéro numéro;
  std::string_view texte;
};

constexpr std::array kLibellés{
    Libellé{Numéro::AppelIncorrect, "Argument ou appel incorrect"},
    Libellé{Numéro::Dépassement, "Dépassement de capacité"},
    Libellé{Numéro::MémoireInsuffisante, "Mémoire insuffisante"},
    Libellé{Numéro::IndiceHorsPlage, "Indice hors de la plage"},
    Libellé{Numéro::DivisionParZéro, "Division par zéro"},
    Libellé{Numéro::TypeIncompatible, "Type incompatible"},
    Libellé{Numéro::ErreurInterne, "Erreur interne"},
    Libellé{Numéro::NuméroDeFichierIncorrect, "Numéro de fichier incorrect"},
    Libellé{Numéro::FichierIntrouvable, "Fichier introuvable"},
    Libellé{Numéro::FichierExistant, "Fichier déjà existant"},
    Libellé{Numéro::ErreurDeFichier, "Erreur d'accès au fichier"},
    Libellé{Numéro::CheminIntrouvable, "Chemin introuvable"},
    Libellé{Numéro::ObjetAbsent, "Objet absent"},
    Libellé{Numéro::NullIncorrect, "Valeur Null à un endroit qui n'en admet pas"},
    Libellé{Numéro::OpérationAbsente, "Propriété ou méthode non gérée par cet objet"},
    Libellé{Numéro::CléDéjàPrésente, "Clé déjà présente dans la collection"},
    Libellé{Numéro::PasDEnregistrement, "Pas d'enregistrement courant"},
    Libellé{Numéro::ColonneAbsente, "Colonne absente de la base de données"},
    Libellé{Numéro::RessourcesDépassées, "Ressources dépassées"},
    Libellé{Numéro::LectureInterrompue, "Lecture interrompue"},
    Libellé{Numéro::BaseVerrouillée, "Base de données verrouillée par un autre programme"},
    Libellé{Numéro::ElémentAbsent, "Elément absent de la collection"},
    Libellé{Numéro::BaseEnLectureSeule, "Base de données en lecture seule"},
    Libellé{Numéro::EditionSansEdit, "Ecriture d'un champ sans Edit"},
    Libellé{Numéro::InstructionRefusée, "Instruction refusée par la base de données"},
    Libellé{Numéro::TableAbsente, "Table absente de la base de données"},
    Libellé{Numéro::LigneDisparue, "Ligne supprimée par un autre programme"},
    Libellé{Numéro::LigneModifiée, "Ligne modifiée par un autre programme depuis sa lecture"},
    Libellé{Numéro::BaseIllisible, "Fichier illisible comme base de données"},
    Libellé{Numéro::MatérielAbsent, "Matériel inaccessible"},
    Libellé{Numéro::ErreurDeLObjet, "Erreur définie par l'objet"},
};

}  // namespace

std::string DescriptionDEchec(Numéro numéro) {
  const auto* libellé = std::ranges::find(kLibellés, numéro, &Libellé::numéro);
  return libellé == kLibellés.end() ? "Erreur inconnue" : std::string(libellé->texte);
}

Echec::Echec(Numéro numéro, std::source_location où)
    : Echec(numéro, DescriptionDEchec(numéro), où) {}

Echec::Echec(Numéro numéro, std::string description, std::source_location où)
    : numéro_(numéro), description_(std::move(description)), ligne_(static_cast<int>(où.line())) {}

Echec Echec::AvecLigne(int ligne) const {
  Echec copie = *this;
  if (copie.ligne_ == 0) copie.ligne_ = ligne;
  return copie;
}

Echec Echec::Précisé(std::string_view détail) const {
  Echec copie = *this;
  copie.description_ += détail;
  return copie;
}

Echec Echec::ObjetAbsent() {
  Echec échec(Numéro::ObjetAbsent);
  échec.ligne_ = 0;
  return échec;
}

Echec EchecCourant(int ligne) {
  Echec échec = Echec::ObjetAbsent();
  try {
    throw;
  } catch (const Echec& connu) {
    return connu.AvecLigne(ligne);
  } catch (const std::bad_alloc&) {
    échec = Echec(Numéro::MémoireInsuffisante);
  } catch (const std::out_of_range&) {
    échec = Echec(Numéro::IndiceHorsPlage);
  } catch (const std::system_error& e) {
    échec = Echec(Numéro::ErreurDeFichier,
                  DescriptionDEchec(Numéro::ErreurDeFichier) + " : " + e.what());
  } catch (const std::exception& e) {
    échec =
        Echec(Numéro::ErreurInterne, DescriptionDEchec(Numéro::ErreurInterne) + " : " + e.what());
  } catch (...) {
    échec = Echec(Numéro::ErreurInterne);
  }
  return échec;
}

}  // namespace zuma
