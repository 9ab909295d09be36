#include "hote/hote_python.h"

#include <pybind11/functional.h>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include "host/demonstration.h"
#include "hote/erreurs.h"
#include "hote/lecture_python.h"
#include "hote/objets_python.h"
#include "hote/poignee.h"
#include "hote/simulation_python.h"
#include "publication/mesures.h"
#include "tree/carte.h"

namespace zuma::python {
namespace {

namespace py = pybind11;
using Partagée = std::shared_ptr<Session>;
using Nombres = py::array_t<double, py::array::c_style>;

/// The numbers of all sensors in one array, the same for every call.
struct Valeurs {
  Partagée session;
  Nombres tableau;

  // Without an array of the caller's it is the one of before, with new numbers.
  Nombres Lit(std::optional<Nombres> où) {
    Nombres& cible = où ? *où : tableau;
    if (cible.ndim() != 1 || cible.shape(0) != tableau.shape(0)) {
      throw Erreur("UsageError", "out must hold one number for each of " +
                                     std::to_string(tableau.shape(0)) + " sensors");
    }
    session->LitLesValeurs(cible.mutable_data());
    return cible;
  }
};

std::function<double()> Source(const Session& session, const std::string& genre, std::size_t rang) {
  const auto& objets = session.LesObjets();
  const auto lit = [](auto* objet) {
    return [objet] { return publication::MesureDe(*objet).valeur; };
  };
  if (genre == "sensor") return lit(objets.capteurs.at(rang).Brut());
  if (genre == "command") return lit(objets.commandes.at(rang).Brut());
  if (genre == "input") return lit(objets.entrées.at(rang).Brut());
  return lit(objets.sorties.at(rang).Brut());
}

std::shared_ptr<Rangées> Enregistre(
    Session& session, const std::vector<std::pair<std::string, std::size_t>>& colonnes) {
  std::vector<std::function<double()>> sources;
  for (const auto& [genre, rang] : colonnes) sources.push_back(Source(session, genre, rang));
  auto rangées = std::make_shared<Rangées>(std::move(sources));
  session.Enregistre(rangées);
  return rangées;
}

Nombres Copie(const Rangées& rangées) {
  const auto colonnes = static_cast<py::ssize_t>(rangées.Colonnes());
  const auto& nombres = rangées.Nombres();
  return Nombres({static_cast<py::ssize_t>(nombres.size()) / colonnes, colonnes}, nombres.data());
}

py::list Causes(const Session& session) {
  py::list causes;
  for (const auto& cause : session.LaMarche().LaSécurité().Causes()) causes.append(cause.texte);
  return causes;
}

void LieLeChoix(py::module_& module) {
  py::class_<Choix>(module, "Choice")
      .def(py::init<>())
      .def_readwrite("file", &Choix::fichier)
      .def_readwrite("frame", &Choix::chassis)
      .def_readwrite("simulation", &Choix::simulation)
      .def_readwrite("rate", &Choix::rythme)
      .def_readwrite("start_anyway", &Choix::malgréTout)
      .def_readwrite("keep_stops", &Choix::gardeLesArrêts)
      .def_readwrite("stops", &Choix::arrêts)
      .def_readwrite("seed", &Choix::graine)
      .def_readwrite("ports", &Choix::ports)
      .def_readwrite("can", &Choix::can)
      .def_readwrite("parameters", &Choix::paramètres)
      .def_readwrite("drivers", &Choix::drivers)
      .def_readwrite("faults", &Choix::pannes);
}

void LieLesMarches(py::class_<Session, Partagée>& classe) {
  py::enum_<Session::Fin>(classe, "End")
      .value("point", Session::Fin::Point)
      .value("time", Session::Fin::Temps)
      .value("stop", Session::Fin::Arrêt);
  classe.def("advance", &Session::Avance)
      .def("run", &Session::Tourne)
      .def("step", &Session::Pas)
      .def("time_loop", &Session::MesureLaBoucle)
      .def("close", &Session::Ferme)
      .def("close_at_exit", &Session::FermeALaFin)
      .def("abandon", &Session::Abandonne);
}

void LieLArrêt(py::class_<Session, Partagée>& classe) {
  classe.def("stop", [](const Session& s, const std::string& cause) { s.LaMarche().Arrête(cause); })
      .def_property_readonly(
          "stopped", [](const Session& s) { return s.LaMarche().LaSécurité().Déclenchée(); })
      .def_property_readonly("causes", &Causes)
      .def_property_readonly(
          "at_rest", [](const Session& s) { return s.LaMarche().LaSécurité().ArrêtComplet(); })
      .def("acknowledge", &Session::Acquitte)
      .def("resume",
           [](Session& s) {
             bool reprise = false;
             s.Fait([&] { reprise = s.LaMarche().RemetEnService(); });
             return reprise;
           })
      .def("on_stop", &Session::QuandArrêt);
}

void LieLaSession(py::module_& module) {
  py::class_<Session, Partagée> classe(module, "Session");
  classe
      .def(py::init([](const Choix& choix) {
        Partagée session;
        {
          const py::gil_scoped_release lâche;
          session = std::make_shared<Session>(choix);
        }
        session->OuvreLeModèle();
        return session;
      }))
      .def_property_readonly("open", &Session::EstOuverte)
      .def_property_readonly("time", &Session::Secondes)
      .def_property_readonly("passes", &Session::Passes)
      .def_property_readonly("publication", &Session::Publication)
      .def_property_readonly("name",
                             [](const Session& s) { return s.LaMarche().LeChassis().Nom(); })
      .def_property_readonly(
          "rate", [](const Session& s) { return s.LaMarche().LeChassis().FréquenceEA(); })
      .def_property_readonly(
          "refreshes",
          [](const Session& s) { return s.LaMarche().LeChassis().RafraichissementsEA(); })
      .def_property_readonly("simulated", [](const Session& s) { return s.LaJumelle() != nullptr; })
      .def_property_readonly("problems",
                             [](const Session& s) { return EnPython(s.LeRecueil().Problèmes()); })
      .def("on_problem",
           [](Session& s, const std::function<void(const std::string&)>& écoute) {
             if (!écoute) return s.QuandProblème({});
             s.QuandProblème([écoute](const host::Problème& p) { écoute(host::Ligne(p)); });
           })
      .def_property_readonly(
          "model",
          [](const Session& s) { return modele::ChassisEnPython(s.LaMarche().LeChassis()); })
      .def("record", &Enregistre)
      .def("sensors",
           [](const Partagée& s) { return Poignées<Capteur>(s, s->LesObjets().capteurs); })
      .def("commands",
           [](const Partagée& s) { return Poignées<Commande>(s, s->LesObjets().commandes); })
      .def("inputs",
           [](const Partagée& s) { return Poignées<EntréeLogique>(s, s->LesObjets().entrées); })
      .def("outputs",
           [](const Partagée& s) { return Poignées<SortieLogique>(s, s->LesObjets().sorties); })
      .def("channels", [](const Partagée& s) { return Poignées<Canal>(s, s->LesObjets().canaux); })
      .def("channel_names",
           [](const Session& s) {
             std::vector<std::string> noms;
             for (const CanalRef& canal : s.LesObjets().canaux) {
               noms.push_back(publication::NomDuCanal(canal));
             }
             return noms;
           })
      .def(
          "boards",
          [](const Partagée& s) { return Poignées<Carte>(s, *s->LaMarche().LeChassis().Cartes()); })
      .def("watchdog",
           [](const Partagée& s) { return Poignée<Watchdog>(s, s->LesObjets().chien.Brut()); });
  LieLesMarches(classe);
  LieLArrêt(classe);
}

}  // namespace

void LieLHôte(py::module_& module) {
  TraduitLesErreurs();
  LieLeChoix(module);
  LieLesObjets(module);
  LieLaSession(module);
  LieLaSimulation(module);
  LieLaLecture(module);
  py::class_<Rangées, std::shared_ptr<Rangées>>(module, "Rows")
      .def("copy", &Copie)
      .def("end", &Rangées::Termine);
  py::class_<Valeurs>(module, "Values")
      .def(py::init([](const Partagée& session) {
        const auto nombre = static_cast<py::ssize_t>(session->LesObjets().capteurs.size());
        return Valeurs{session, Nombres(nombre)};
      }))
      .def("read", &Valeurs::Lit, py::arg("out").noconvert() = py::none());
  module.def("write_demo", &host::EcritLaDémonstration);
}

}  // namespace zuma::python
