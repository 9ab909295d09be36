// Collaborators for a host that brings none of its own.
#include <map>
#include <pybind11/functional.h>
#include <pybind11/stl.h>
#include <span>

#include "core/chassis.h"
#include "modele/liaisons.h"
#include "modele/tables.h"
#include "platform/linux/horloge_systeme.h"
#include "platform/linux/parametres.h"
#include "platform/linux/registre_erreurs.h"
#include "platform/linux/securite.h"
#include "platform/linux/traducteur.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

using linux_::Parametre;
using linux_::Parametres;
using linux_::RegistreErreurs;
using linux_::Securite;
using linux_::Traducteur;

void LieLeRegistre(py::module_& m) {
  using Entrée = RegistreErreurs::Entrée;
  py::class_<Entrée>(m, "Entrée", "One entry of the error record.")
      .def_readonly("instant", &Entrée::instant, "local date and time")
      .def_readonly("message", &Entrée::message, "what failed")
      .def_property_readonly(
          "variables", [](const Entrée& e) { return e.variables; },
          "rows of text and value; the first one is empty")
      .def("__str__", [](const Entrée& e) { return RegistreErreurs::Texte(e); });
  py::class_<RegistreErreurs, ZED_Erreur, std::shared_ptr<RegistreErreurs>>(
      m, "RegistreErreurs", "Error record that keeps the last entries, in a file too.")
      .def(py::init([](const std::string& fichier, std::size_t entrées) {
             return std::make_shared<RegistreErreurs>(
                 linux_::RéglagesRegistre{.fichier = fichier, .entrées = entrées});
           }),
           "fichier"_a = "", "entrées"_a = 1000)
      .def_property_readonly(
          "Entrées",
          [](const RegistreErreurs& r) {
            return std::vector<Entrée>(r.Entrées().begin(), r.Entrées().end());
          },
          "The last entries, oldest first.")
      .def_property_readonly("Total", &RegistreErreurs::Total, "Every entry received.")
      .def_property_readonly("NonEcrites", &RegistreErreurs::NonEcrites,
                             "Entries that did not reach the file.")
      .def_property_readonly("ErreurDuFichier", &RegistreErreurs::ErreurDuFichier,
                             "The system's number of the last failure of the file; 0: none.")
      .def("Vide", &RegistreErreurs::Vide, "Forgets the entries in memory.");
}

// Frames of each safety object: what it does to them is a call on them.
using Laisses = std::vector<std::weak_ptr<Laisse>>;
std::map<const Securite*, Laisses>& LesBranchés() {
  static auto* const branchés = new std::map<const Securite*, Laisses>;  // ends with the process
  return *branchés;
}

// Runs `travail` within a call on each of the frames that are open.
template <class Travail>
auto DansLesChassis(std::span<const std::weak_ptr<Laisse>> laisses, const Travail& travail)
    -> decltype(travail()) {
  if (laisses.empty()) return AppelleLibre(travail);
  const auto laisse = laisses.back().lock();
  const auto autres = laisses.first(laisses.size() - 1);
  if (!laisse || !laisse->Ouverte()) return DansLesChassis(autres, travail);
  const Séjour séjour(laisse);
  laisse->Touche();
  return DansLesChassis(autres, travail);
}

void Maintient(Securite& sécurité) {
  const Laisses laisses = LesBranchés()[&sécurité];
  DansLesChassis(laisses, [&] {
    const py::gil_scoped_release libre;
    sécurité.Maintient();
  });
}

Valeur Déclenche(Securite& sécurité) {
  const Laisses laisses = LesBranchés()[&sécurité];
  return DansLesChassis(laisses, [&] {
    const py::gil_scoped_release libre;
    return sécurité.DéclencheSécurité();
  });
}

// The frame is forgotten before it ends, by whatever way.
void Branche(const std::shared_ptr<Securite>& sécurité, PoignéeDe<Chassis>& chassis,
             const std::shared_ptr<RegistreErreurs>& registre) {
  Chassis& objet = chassis.Objet();
  sécurité->Branche(objet, registre);
  Laisses& laisses = LesBranchés()[sécurité.get()];
  std::erase_if(laisses, [](const auto& laisse) { return laisse.expired(); });
  laisses.emplace_back(chassis.LaLaisse());
  chassis.LaLaisse()->ALaFin([suivie = std::weak_ptr(sécurité), &objet] {
    if (const auto là = suivie.lock()) là->Débranche(objet);
  });
}

void LieLaSécurité(py::module_& m) {
  using Cause = Securite::Cause;
  py::class_<Cause>(m, "Cause", "One cause of the stop that is latched.")
      .def_readonly("texte", &Cause::texte, "as first raised")
      .def_readonly("heure", &Cause::heure, "local time of the first raise")
      .def_readonly("fois", &Cause::fois, "how often it was raised")
      .def("__str__", [](const Cause& c) { return c.texte; });
  py::class_<Securite, ZED_Securite, std::shared_ptr<Securite>>(
      m, "Securite", "Safety object: latches the causes of a stop, and lets the host acknowledge.")
      .def(py::init([](const Ref<ZED_Timer>& timer) { return std::make_shared<Securite>(timer); }),
           "timer"_a)
      .def("Branche", &Branche, "chassis"_a, "registre"_a = py::none(), "One more frame to stop.")
      .def(
          "Débranche",
          [](Securite& s, PoignéeDe<Chassis>& chassis) { s.Débranche(chassis.Objet()); },
          "chassis"_a, "Forgets one frame.")
      .def(
          "Débranche", [](Securite& s) { s.Débranche(); }, "Forgets all frames.")
      .def("Bornes", &Securite::Bornes, "traducteur"_a,
           "Takes the text between origin and value of a cause, in all languages.")
      .def("DéclencheSécurité", &Déclenche, "Fires the stop of every frame that is plugged in.")
      .def("Maintient", &Maintient,
           "Drives a latched stop again when it is due; for each turn of a host's loop.")
      .def_property_readonly("Déclenchée", &Securite::Déclenchée,
                             "True from the first cause to the acknowledgement.")
      .def_property_readonly("ArrêtComplet", &Securite::ArrêtComplet,
                             "Every output is where the stop put it.")
      .def_property_readonly("Causes", &Securite::Causes,
                             "The causes; the first one fired the stop.")
      .def_property_readonly("Perdues", &Securite::Perdues, "Raises whose cause was not kept.")
      .def("Acquitte", &Securite::Acquitte,
           "Forgets the causes. False while the stop is being driven.");
}

void LieLesParamètres(py::module_& m) {
  py::class_<Parametre, ZED_Parametre, std::shared_ptr<Parametre>>(
      m, "Parametre", "Shared parameter that tells its listeners of each new text.")
      .def(py::init([](std::string clé, std::string nom, std::string valeur) {
             return std::make_shared<Parametre>(std::move(clé), std::move(nom), std::move(valeur));
           }),
           "clé"_a, "nom"_a, "valeur"_a = "");
  py::class_<Parametres>(m, "Parametres", "The parameters of a host that brings none.")
      .def(py::init<>())
      .def("Ajoute", &Parametres::Ajoute, "index"_a, "valeur"_a = "", "nom"_a = "",
           "Adds a parameter, or writes the one of this index.")
      .def("Cherche", &Parametres::Cherche, "index"_a, "The parameter of this index, or None.")
      .def_property_readonly("Collection", &Parametres::Collection, "What Chassis.Lien takes.");
}

void LieLeTraducteur(py::module_& m) {
  const auto textes = [](const std::vector<Traducteur::Problème>& problèmes) {
    std::vector<std::string> lignes;
    for (const auto& p : problèmes) lignes.push_back(std::to_string(p.ligne) + ": " + p.texte);
    return lignes;
  };
  m.def(
      "TraductionsIncluses", [] { return std::string(linux_::TraductionsIncluses()); },
      "The table of texts built into the library.");
  py::class_<Traducteur, ZED_Traduction, std::shared_ptr<Traducteur>>(
      m, "Traducteur", "Translator over tables of texts, with the built-in one.")
      .def(py::init<>())
      .def(
          "AjouteTable",
          [textes](Traducteur& t, const std::string& table) {
            return textes(t.AjouteTable(table));
          },
          "table"_a, "Adds a table; gives the lines that were not taken, and why.")
      .def(
          "AjouteFichier",
          [textes](Traducteur& t, const std::string& fichier) {
            return textes(t.AjouteFichier(fichier));
          },
          "fichier"_a, "The same from a file.");
}

}  // namespace

void LieLesObjetsDeLHôte(py::module_& m) {
  LieLeRegistre(m);
  LieLaSécurité(m);
  LieLesParamètres(m);
  LieLeTraducteur(m);
}

}  // namespace zuma::python::modele
