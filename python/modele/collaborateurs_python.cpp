// Objects that a host hands to a frame, and that Python may write.
#include <chrono>
#include <pybind11/functional.h>
#include <pybind11/stl.h>

#include "modele/liaisons.h"
#include "modele/rappels.h"
#include "modele/tables.h"
#include "platform/collaborateurs.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

// Waits end by the clock alone: one that fails goes on from its last reading at the pace of the
// machine's own, so that the stop behind the failure is driven.
class TimerPython : public ZED_Timer, public EcritEnPython {
 public:
  double LitMicrosecondes() override {
    const double heure = Microsecondes();
    const double lue = DemandeSansEchec(static_cast<ZED_Timer*>(this), "LitMicrosecondes",
                                        dernière_ + (heure - heureDeLecture_));
    heureDeLecture_ = heure;
    return dernière_ = lue;
  }

 private:
  static double Microsecondes() {
    const auto heure = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::micro>(heure).count();
  }
  double dernière_ = 0;
  double heureDeLecture_ = Microsecondes();
};

class ErreurPython : public ZED_Erreur, public EcritEnPython {
 public:
  void AjouteErreur(std::string_view message, const TableVariables& variables) override {
    EnPythonSansEchec([&] {
      MéthodeÉcrite(static_cast<ZED_Erreur*>(this), "AjouteErreur")(Texte(message), variables);
    });
  }

 private:
  // A message may quote bytes of a line.
  static py::str Texte(std::string_view message) {
    return py::reinterpret_steal<py::str>(
        PyUnicode_DecodeUTF8(message.data(), static_cast<Py_ssize_t>(message.size()), "replace"));
  }
};

class SecuritePython : public ZED_Securite, public EcritEnPython {
 public:
  void PositionneCauseAU(std::string_view cause) override {
    Demande<void>(static_cast<ZED_Securite*>(this), "PositionneCauseAU", cause);
  }
  Valeur DéclencheSécurité() override {
    return Demande<Valeur>(static_cast<ZED_Securite*>(this), "DéclencheSécurité");
  }
};

class ParametrePython : public ZED_Parametre, public EcritEnPython {
 public:
  std::string Key() const override { return Attribut<std::string>(Moi(), "Key"); }
  std::string NomParamètre() const override { return Attribut<std::string>(Moi(), "NomParamètre"); }
  std::string ValeurParamètre() const override {
    return Attribut<std::string>(Moi(), "ValeurParamètre");
  }
  void ValeurParamètre(std::string valeur) override {
    PoseAttribut(Moi(), "ValeurParamètre", valeur);
  }
  int Abonne(Abonné abonné) override { return Demande<int>(Moi(), "Abonne", abonné); }
  void Désabonne(int numéro) noexcept override { DisSansEchec(Moi(), "Désabonne", numéro); }

 private:
  [[nodiscard]] const ZED_Parametre* Moi() const { return this; }
};

class TraductionPython : public ZED_Traduction, public EcritEnPython {
 public:
  std::string LangueCourante() const override {
    return Attribut<std::string>(Moi(), "LangueCourante");
  }
  void LangueCourante(std::string langue) override {
    PoseAttribut(Moi(), "LangueCourante", langue);
  }
  std::vector<std::string> Langues() const override {
    return Attribut<std::vector<std::string>>(Moi(), "Langues");
  }
  std::string Traduit(std::string_view clé, std::string_view défaut,
                      std::string_view section) const override {
    return Demande<std::string>(Moi(), "Traduit", clé, défaut, section);
  }

 private:
  [[nodiscard]] const ZED_Traduction* Moi() const { return this; }
};

void LieLeTimer(py::module_& m) {
  py::class_<ZED_Timer, TimerPython, std::shared_ptr<ZED_Timer>>(
      m, "ZED_Timer",
      "High-resolution timer of a frame. A class of Python writes LitMicrosecondes.")
      .def(py::init<>())
      .def(
          "LitMicrosecondes",
          [](ZED_Timer& t) {
            return AppelleLibre([&] { return ExigeLaBibliothèque(t).LitMicrosecondes(); });
          },
          "Monotonic time in microseconds since an arbitrary origin.");
}

void LieLErreur(py::module_& m) {
  py::class_<ZED_Erreur, ErreurPython, std::shared_ptr<ZED_Erreur>>(
      m, "ZED_Erreur",
      "Error record: one entry for each operation that failed. A class of Python writes "
      "AjouteErreur(message, variables).")
      .def(py::init<>())
      .def(
          "AjouteErreur",
          [](ZED_Erreur& e, const std::string& message, const TableVariables& variables) {
            AppelleLibre([&] { ExigeLaBibliothèque(e).AjouteErreur(message, variables); });
          },
          "message"_a, "variables"_a = TableVariables(1),
          "Stores an entry: its text, and rows of text and value, the first one empty.");
}

void LieLaSécurité(py::module_& m) {
  py::class_<ZED_Securite, SecuritePython, std::shared_ptr<ZED_Securite>>(
      m, "ZED_Securite",
      "Safety object: where a stop is decided. A class of Python writes PositionneCauseAU(cause) "
      "and DéclencheSécurité().")
      .def(py::init<>())
      .def(
          "PositionneCauseAU",
          [](ZED_Securite& s, const std::string& cause) {
            AppelleLibre([&] { ExigeLaBibliothèque(s).PositionneCauseAU(cause); });
          },
          "cause"_a, "Keeps the cause, a complete text in the operator's language.")
      .def(
          "DéclencheSécurité",
          [](ZED_Securite& s) {
            return AppelleLibre([&] { return ExigeLaBibliothèque(s).DéclencheSécurité(); });
          },
          "Fires the stop; expected to end in Chassis.DéclencheAU.");
}

void LieLeParamètre(py::module_& m) {
  py::class_<ZED_Parametre, ParametrePython, std::shared_ptr<ZED_Parametre>>(
      m, "ZED_Parametre",
      "One shared parameter: a named text that tells its listeners when it changes. A class of "
      "Python writes Key, NomParamètre and ValeurParamètre (properties), Abonne and Désabonne.")
      .def(py::init<>())
      .def_property_readonly(
          "Key",
          [](ZED_Parametre& p) {
            return AppelleLibre([&] { return ExigeLaBibliothèque(p).Key(); });
          },
          "Key in the host's collection, the decimal text of its index.")
      .def_property_readonly(
          "NomParamètre",
          [](ZED_Parametre& p) {
            return AppelleLibre([&] { return ExigeLaBibliothèque(p).NomParamètre(); });
          },
          "Name, compared exactly with the names of the configuration.")
      .def_property(
          "ValeurParamètre",
          [](ZED_Parametre& p) {
            return AppelleLibre([&] { return ExigeLaBibliothèque(p).ValeurParamètre(); });
          },
          [](ZED_Parametre& p, std::string v) {
            AppelleLibre([&] { ExigeLaBibliothèque(p).ValeurParamètre(std::move(v)); });
          },
          "The text; writing it tells the listeners.")
      .def(
          "Abonne",
          [](ZED_Parametre& p, py::function f) {
            return AppelleLibre(
                [&] { return ExigeLaBibliothèque(p).Abonne(Rappel<>(std::move(f))); });
          },
          "f"_a, "Registers a handler of Change and returns its number, for Désabonne.")
      .def(
          "Désabonne",
          [](ZED_Parametre& p, int n) {
            AppelleLibre([&] { ExigeLaBibliothèque(p).Désabonne(n); });
          },
          "numéro"_a, "Removes a handler; nothing on a number that is not there.")
      .def(
          "Change",
          [](const std::shared_ptr<ZED_Parametre>& p, py::function f) {
            const int n = p->Abonne(Rappel<>(std::move(f)));
            return Abonnement([p, n] { p->Désabonne(n); });
          },
          "f"_a, "Event: calls f() when the text changes, until the subscription ends.");
}

void LieLesParamètres(py::module_& m) {
  using P = ParamètresPartagés;
  py::class_<P, std::shared_ptr<P>>(m, "ParamètresPartagés",
                                    "The host's parameters, in its order; any list of parameters "
                                    "may stand for it.")
      .def(py::init([](const py::iterable& parametres) {
             const auto partagés = std::make_shared<P>();
             for (const py::handle p : parametres) {
               partagés->push_back(p.cast<Ref<ZED_Parametre>>());
             }
             return partagés;
           }),
           "parametres"_a = py::list())
      .def("__len__", [](const P& p) { return p.size(); })
      .def(
          "__getitem__",
          [](const P& p, std::size_t rang) {
            if (rang >= p.size()) throw py::index_error(std::to_string(rang));
            return p[rang];
          },
          "rang"_a)
      .def("append", [](P& p, const Ref<ZED_Parametre>& q) { p.push_back(q); }, "paramètre"_a);
  py::implicitly_convertible<py::list, P>();
}

void LieLaTraduction(py::module_& m) {
  py::class_<ZED_Traduction, TraductionPython, std::shared_ptr<ZED_Traduction>>(
      m, "ZED_Traduction",
      "Translator of the operator's texts. A class of Python writes LangueCourante and Langues "
      "(properties) and Traduit(clé, défaut, section).")
      .def(py::init<>())
      .def_property(
          "LangueCourante",
          [](ZED_Traduction& t) {
            return AppelleLibre([&] { return ExigeLaBibliothèque(t).LangueCourante(); });
          },
          [](ZED_Traduction& t, std::string l) {
            AppelleLibre([&] { ExigeLaBibliothèque(t).LangueCourante(std::move(l)); });
          },
          "Name of the language that texts are given in, one of Langues.")
      .def_property_readonly(
          "Langues",
          [](ZED_Traduction& t) {
            return AppelleLibre([&] { return ExigeLaBibliothèque(t).Langues(); });
          },
          "The languages known.")
      .def(
          "Traduit",
          [](ZED_Traduction& t, const std::string& clé, const std::string& défaut,
             const std::string& section) {
            return AppelleLibre(
                [&] { return ExigeLaBibliothèque(t).Traduit(clé, défaut, section); });
          },
          "clé"_a, "défaut"_a = "", "section"_a = "Zuma",
          "Translation of the key; without one the default, without a default the key.");
}

}  // namespace

void LieLesCollaborateurs(py::module_& m) {
  LieLeTimer(m);
  LieLErreur(m);
  LieLaSécurité(m);
  LieLeParamètre(m);
  LieLesParamètres(m);
  LieLaTraduction(m);
}

}  // namespace zuma::python::modele
