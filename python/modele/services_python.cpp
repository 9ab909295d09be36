// Services of the machine that Python may write.
#include <pybind11/stl.h>

#include "modele/liaisons.h"
#include "modele/rappels.h"
#include "modele/services.h"
#include "modele/tables.h"
#include "platform/fenetres.h"
#include "platform/reglages.h"
#include "platform/services.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {

void MessagesVersPython::Montre(std::string_view texte, const ObjetConcerné& objet) {
  EnPythonSansEchec([&] {
    const std::string ligne = "message: " + std::string(texte) + " (" + std::string(objet.classe) +
                              " " + std::string(objet.nom) + ")\n";
    py::module_::import("sys").attr("stderr").attr("write")(ligne);
  });
}

namespace {

class MessagesPython : public BoîteDeMessage, public EcritEnPython {
 public:
  void Montre(std::string_view texte, const ObjetConcerné& objet) override {
    Demande<void>(static_cast<BoîteDeMessage*>(this), "Montre", texte, objet);
  }
};

class PortsPython : public PortsES, public EcritEnPython {
 public:
  std::uint8_t Inp(std::uint16_t port) override { return Lit<std::uint8_t>("Inp", port); }
  std::uint16_t Inpw(std::uint16_t port) override { return Lit<std::uint16_t>("Inpw", port); }
  std::uint32_t Inpd(std::uint16_t port) override { return Lit<std::uint32_t>("Inpd", port); }
  void Outp(std::uint16_t port, std::uint8_t v) override { Ecrit("Outp", port, v); }
  void Outpw(std::uint16_t port, std::uint16_t v) override { Ecrit("Outpw", port, v); }
  void Outpd(std::uint16_t port, std::uint32_t v) override { Ecrit("Outpd", port, v); }

 private:
  template <class R>
  R Lit(const char* nom, std::uint16_t port) {
    return Demande<R>(static_cast<PortsES*>(this), nom, port);
  }
  template <class V>
  void Ecrit(const char* nom, std::uint16_t port, V valeur) {
    Demande<void>(static_cast<PortsES*>(this), nom, port, valeur);
  }
};

class CompteursPython : public CompteursFins, public EcritEnPython {
 public:
  std::int16_t Ouvre(std::string_view nom) override {
    return Demande<std::int16_t>(Moi(), "Ouvre", nom);
  }
  std::int32_t Lit(std::int16_t poignée) override {
    return Demande<std::int32_t>(Moi(), "Lit", poignée);
  }
  void Ferme(std::int16_t poignée) noexcept override { DisSansEchec(Moi(), "Ferme", poignée); }

 private:
  [[nodiscard]] const CompteursFins* Moi() const { return this; }
};

class HorlogePython : public Horloge, public EcritEnPython {
 public:
  std::string TexteHeure() const override {
    return Demande<std::string>(static_cast<const Horloge*>(this), "TexteHeure");
  }
  void Dort(double secondes) override {
    Demande<void>(static_cast<const Horloge*>(this), "Dort", secondes);
  }
};

class FichiersPython : public Fichiers, public EcritEnPython {
 public:
  void AjouteLigne(std::string_view chemin, std::string_view ligne) override {
    Demande<void>(Moi(), "AjouteLigne", chemin, ligne);
  }
  void Supprime(std::string_view chemin) noexcept override {
    DisSansEchec(Moi(), "Supprime", chemin);
  }
  void AjouteBloc(std::string_view chemin, std::span<const std::string> lignes) override {
    Demande<void>(Moi(), "AjouteBloc", chemin, Liste(lignes));
  }
  void EcritBloc(std::int16_t numéro, std::span<const std::string> lignes) override {
    Demande<void>(Moi(), "EcritBloc", numéro, Liste(lignes));
  }

 private:
  static std::vector<std::string> Liste(std::span<const std::string> lignes) {
    return {lignes.begin(), lignes.end()};
  }
  [[nodiscard]] const Fichiers* Moi() const { return this; }
};

class FinPython : public FinDuProgramme, public EcritEnPython {
 public:
  void ArrêteLeProgramme(std::string_view raison) override {
    Demande<void>(Moi(), "ArrêteLeProgramme", raison);
  }
  bool EnCours() const override { return DemandeSiEcrit(Moi(), "EnCours", false); }

 private:
  [[nodiscard]] const FinDuProgramme* Moi() const { return this; }
};

class FenêtrePython : public FenêtreHôte, public EcritEnPython {
 public:
  std::uintptr_t hwnd() const override {
    return DemandeSiEcrit(static_cast<const FenêtreHôte*>(this), "hwnd", std::uintptr_t{0});
  }
  void rafraichitTout() override {
    Demande<void>(static_cast<FenêtreHôte*>(this), "rafraichitTout");
  }
};

// Python writes the operations of these: what it leaves out has none (438).
template <class I, class P>
auto Interface(py::module_& m, const char* nom, const char* doc) {
  return py::class_<I, P, std::shared_ptr<I>>(m, nom, doc).def(py::init<>());
}
template <class I, class R, class... A>
auto Opération(R (I::*f)(A...)) {
  return [f](I& objet, std::decay_t<A>... arguments) -> R {
    return (ExigeLaBibliothèque(objet).*f)(arguments...);
  };
}
template <class I, class R, class... A>
auto Opération(R (I::*f)(A...) noexcept) {
  return Opération(static_cast<R (I::*)(A...)>(f));
}
template <class I, class R>
auto Opération(R (I::*f)() const) {
  return [f](const I& objet) -> R { return (ExigeLaBibliothèque(objet).*f)(); };
}

void LieLesPorts(py::module_& m) {
  Interface<PortsES, PortsPython>(m, "PortsES", "I/O ports of the machine, written in Python.")
      .def("Inp", Opération(&PortsES::Inp), "port"_a, "Reads a byte.")
      .def("Inpw", Opération(&PortsES::Inpw), "port"_a, "Reads a word.")
      .def("Inpd", Opération(&PortsES::Inpd), "port"_a, "Reads a double word.")
      .def("Outp", Opération(&PortsES::Outp), "port"_a, "octet"_a, "Writes a byte.")
      .def("Outpw", Opération(&PortsES::Outpw), "port"_a, "mot"_a, "Writes a word.")
      .def("Outpd", Opération(&PortsES::Outpd), "port"_a, "mot"_a, "Writes a double word.");
}

void LieLesFichiers(py::module_& m) {
  using Lignes = std::vector<std::string>;
  Interface<Fichiers, FichiersPython>(m, "Fichiers", "Text files, written in Python.")
      .def("AjouteLigne", Opération(&Fichiers::AjouteLigne), "chemin"_a, "ligne"_a,
           "Appends one line to a file of the installation.")
      .def("Supprime", Opération(&Fichiers::Supprime), "chemin"_a, "Deletes the file, if any.")
      .def(
          "AjouteBloc",
          [](Fichiers& f, const std::string& chemin, const Lignes& lignes) {
            ExigeLaBibliothèque(f).AjouteBloc(chemin, lignes);
          },
          "chemin"_a, "lignes"_a, "Appends lines to a file of the host.")
      .def(
          "EcritBloc",
          [](Fichiers& f, std::int16_t numéro, const Lignes& lignes) {
            ExigeLaBibliothèque(f).EcritBloc(numéro, lignes);
          },
          "numéro"_a, "lignes"_a, "Writes lines on an open file descriptor.");
}

void LieLesInterfaces(py::module_& m) {
  LieLesPorts(m);
  LieLesFichiers(m);
  Interface<CompteursFins, CompteursPython>(m, "CompteursFins", "Fine counters, by handle.")
      .def("Ouvre", Opération(&CompteursFins::Ouvre), "nom"_a, "Opens a counter; its handle.")
      .def("Lit", Opération(&CompteursFins::Lit), "poignée"_a, "Microseconds since.")
      .def("Ferme", Opération(&CompteursFins::Ferme), "poignée"_a, "Gives the handle back.");
  Interface<Horloge, HorlogePython>(m, "Horloge", "Time of the day, and sleep.")
      .def("TexteHeure", Opération(&Horloge::TexteHeure), "Local time as \"hh:mm:ss\".")
      .def("Dort", Opération(&Horloge::Dort), "secondes"_a, "Stops the thread for that long.");
  Interface<FinDuProgramme, FinPython>(m, "FinDuProgramme", "End of the whole process.")
      .def("ArrêteLeProgramme", Opération(&FinDuProgramme::ArrêteLeProgramme), "raison"_a,
           "Ends the process; one that returns or raises has the operation fail.")
      .def(
          "EnCours", [](const FinDuProgramme&) { return false; },
          "The end was asked for, and the host is doing its last act.");
  Interface<FenêtreHôte, FenêtrePython>(m, "FenêtreHôte", "A window of the host.")
      .def(
          "hwnd", [](const FenêtreHôte&) { return 0; }, "Handle of the window; 0 without one.")
      .def("rafraichitTout", Opération(&FenêtreHôte::rafraichitTout),
           "Shows the new table once a command was calibrated.");
}

void LieLesMessages(py::module_& m) {
  const auto lit = [](std::string_view ObjetConcerné::* membre) {
    return [membre](const ObjetConcerné& o) { return std::string(o.*membre); };
  };
  py::class_<ObjetConcerné>(m, "ObjetConcerné", "The object on whose behalf a message is shown.")
      .def_property_readonly("classe", lit(&ObjetConcerné::classe), "class word")
      .def_property_readonly("clé", lit(&ObjetConcerné::clé), "index of its row, as text")
      .def_property_readonly("nom", lit(&ObjetConcerné::nom), "name of the object");
  Interface<BoîteDeMessage, MessagesPython>(m, "BoîteDeMessage", "Notices, written in Python.")
      .def(
          "Montre",
          [](BoîteDeMessage& b, const std::string& texte, const ObjetConcerné& objet) {
            ExigeLaBibliothèque(b).Montre(texte, objet);
          },
          "texte"_a, "objet"_a, "Shows the text and returns once it has been answered.");
}

void LieLesRègles(py::module_& m) {
  using D = DialogueRègles;
  py::class_<D> classe(m, "DialogueRègles", "Identifiers and command bytes of the rulers.");
  const std::pair<const char*, std::uint16_t D::*> identifiants[] = {
      {"demande", &D::demande},
      {"réponse", &D::réponse},
      {"sélection", &D::sélection},
      {"réponseSélection", &D::réponseSélection}};
  const std::pair<const char*, std::uint8_t D::*> octets[] = {
      {"identité", &D::identité},
      {"positionID", &D::positionID},
      {"statusID", &D::statusID},
      {"marche", &D::marche},
      {"fixePositionID", &D::fixePositionID},
      {"fixeStatusID", &D::fixeStatusID},
      {"fixeMode", &D::fixeMode}};
  for (const auto& [nom, membre] : identifiants) classe.def_readwrite(nom, membre);
  for (const auto& [nom, membre] : octets) classe.def_readwrite(nom, membre);
  classe.def_readwrite("paramètres", &D::paramètres);
  py::class_<TempsCAN>(m, "TempsCAN", "Bus timing of one speed.")
      .def(py::init<>())
      .def_readwrite("vitesse", &TempsCAN::vitesse)
      .def_readwrite("registres", &TempsCAN::registres);
}

void LieLesRéglages(py::module_& m) {
  py::class_<RéglagesCAN>(m, "RéglagesCAN", "The CAN card and its rulers.")
      .def_readwrite("numéroDeSérie", &RéglagesCAN::numéroDeSérie)
      .def_readwrite("attenteDémarrage", &RéglagesCAN::attenteDémarrage, "milliseconds")
      .def_readwrite("attenteLecture", &RéglagesCAN::attenteLecture, "milliseconds")
      .def_readwrite("dialogue", &RéglagesCAN::dialogue)
      .def_readwrite("temps", &RéglagesCAN::temps);
  py::class_<RéglagesIK121>(m, "RéglagesIK121", "The encoder board IK 121.")
      .def_readwrite("demandeLatch", &RéglagesIK121::demandeLatch)
      .def_readwrite("départCompteur", &RéglagesIK121::départCompteur)
      .def_readwrite("latch", &RéglagesIK121::latch)
      .def_property(
          "motHaut", [](const RéglagesIK121& r) { return r.motHaut; },
          [](RéglagesIK121& r, MotHautIK121 v) { r.motHaut = v; });
  py::class_<RéglagesEtalonnage>(m, "RéglagesEtalonnage", "What a calibration leaves in its row.")
      .def_readwrite("personne", &RéglagesEtalonnage::personne, "who calibrates");
  py::class_<Réglages>(m, "Réglages", "Settings of the installation.")
      .def_property(
          "séparateurDécimal",
          [](const Réglages& r) { return std::string(1, r.séparateurDécimal); },
          [](Réglages& r, char s) { r.séparateurDécimal = s; },
          "Between units and decimals in numbers shown to people.")
      .def_readwrite("stabilisationACL8316", &Réglages::stabilisationACL8316, "microseconds")
      .def_readwrite("horlogeACL8316", &Réglages::horlogeACL8316, "hertz")
      .def_readwrite("can", &Réglages::can)
      .def_readwrite("ik121", &Réglages::ik121)
      .def_readwrite("étalonnage", &Réglages::étalonnage)
      .def_readwrite("polaritéPCI9111", &Réglages::polaritéPCI9111)
      .def_readwrite("premierRegistreConditionneur", &Réglages::premierRegistreConditionneur)
      .def_readwrite("vitesseThumler", &Réglages::vitesseThumler)
      .def_readwrite("finDeDemandeMETRO", &Réglages::finDeDemandeMETRO);
}

}  // namespace

void LieLesServices(py::module_& m) {
  LieLesMessages(m);
  LieLesInterfaces(m);
  LieLesRègles(m);
  LieLesRéglages(m);
}

}  // namespace zuma::python::modele
