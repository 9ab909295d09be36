#include "hote/objets_python.h"

#include <cmath>
#include <optional>
#include <pybind11/stl.h>

#include "host/regard/textes.h"
#include "hote/erreurs.h"
#include "hote/poignee.h"
#include "publication/mesures.h"

namespace zuma::python {
namespace {

namespace py = pybind11;
using publication::Genre;
using publication::Mesure;

// The kind of a handled object, as those who look at a publication know it.
template <class T>
constexpr Genre kGenre = Genre::Capteur;
template <>
constexpr Genre kGenre<Commande> = Genre::Commande;
template <>
constexpr Genre kGenre<EntréeLogique> = Genre::Entrée;
template <>
constexpr Genre kGenre<SortieLogique> = Genre::Sortie;
template <>
constexpr Genre kGenre<Watchdog> = Genre::Watchdog;
template <>
constexpr Genre kGenre<Canal> = Genre::Canal;

template <class T>
std::string Etat(const Poignée<T>& p) {
  return host::EtatEnTexte({.genre = kGenre<T>}, publication::MesureDe(*p));
}

using Limites = std::optional<std::pair<double, double>>;

// Both at 0 are a row without limits.
Limites EntreLesDeux(double mini, double maxi) {
  if (mini == 0 && maxi == 0) return {};
  return std::pair(mini, maxi);
}

// "<Sensor Force: 12.3 kN, ok>"
template <class T>
std::string Représente(const Poignée<T>& p, const char* classe, const std::string& nom,
                       const std::string& unité = {}) {
  if (!p.LaSession().EstOuverte()) return "<" + std::string(classe) + " of a closed frame>";
  publication::ObjetPublié objet{.genre = kGenre<T>};
  objet.unité = unité;
  const Mesure mesure = publication::MesureDe(*p);
  return "<" + std::string(classe) + " " + nom + ": " + host::ValeurEnTexte(objet, mesure) + ", " +
         host::EtatEnTexte(objet, mesure) + ">";
}

std::optional<std::string> NomDuCanal(const CanalRef& canal) {
  if (!canal) return {};
  return publication::NomDuCanal(canal);
}

void Met(const Poignée<Commande>& c, double unités, const std::optional<std::string>& unité,
         bool serre) {
  c.LaSession().ExigeSansArrêt();
  const auto refuse = [&](const std::string& pourquoi) {
    throw Erreur("UsageError", "command " + c->Label() + ": " + pourquoi);
  };
  if (unité && *unité != c->UnitéEtalonnage()) {
    refuse("its unit is \"" + c->UnitéEtalonnage() + "\", not \"" + *unité + "\"");
  }
  if (!std::isfinite(unités)) refuse("a set point is a finite number");
  if (!c->Enabled()) refuse("it is out of service; set enabled = True first");
  if (c->TypeCommande() == ENUM_TYPE_COMMANDE::Recopie) refuse("it follows its sensor");
  if (!serre && (unités < c->MiniCommande() || unités > c->MaxiCommande())) {
    refuse(host::NombreEnTexte(unités) + " " + c->UnitéEtalonnage() + " is outside " +
           host::NombreEnTexte(c->MiniCommande()) + " to " +
           host::NombreEnTexte(c->MaxiCommande()));
  }
  c.LaSession().Fait([&] { c->ValeurCouranteEnUnité(unités); });
}

// In service is what a stop keeps from anybody; out of service is always free.
template <class T>
void MetEnService(const Poignée<T>& p, bool enService) {
  if (enService) p.LaSession().ExigeSansArrêt();
  p.LaSession().Fait([&] { p->Enabled(enService); });
}

void Commute(const Poignée<SortieLogique>& s, bool active) {
  if (active) s.LaSession().ExigeSansArrêt();
  s.LaSession().Fait(
      [&] { s->ValeurCourante(active ? ENUM_ETAT_LOGIQUE::Actif : ENUM_ETAT_LOGIQUE::Inactif); });
}

// An output may follow a sensor: what moves its value waits for the acknowledgement.
template <class Acte>
void Agit(const Poignée<Capteur>& c, Acte&& acte) {
  c.LaSession().ExigeSansArrêt();
  c.LaSession().Fait([&] { acte(*c); });
}

bool EstOccupé(const Poignée<Capteur>& c) {
  return c->EtatRAZ() == ENUM_OPERATION_MAV::Acquisition ||
         c->EtatTare() == ENUM_OPERATION_MAV::Acquisition || c.LaSession().Tare(*c);
}

void RemetAZéro(const Poignée<Capteur>& c) {
  if (EstOccupé(c)) throw Erreur("UsageError", "sensor " + c->Label() + ": it is measuring");
  if (!c->RazAutorise_bln()) {
    throw Erreur("UsageError", "sensor " + c->Label() + ": its row does not allow a zero");
  }
  Agit(c, [](Capteur& capteur) { capteur.Raz(); });
}

void LieLeCapteur(py::module_& module) {
  using P = Poignée<Capteur>;
  py::class_<P>(module, "Sensor", "A measurement in engineering units.")
      .def_property_readonly(
          "value", [](const P& p) { return publication::MesureDe(*p).valeur; },
          "Present reading in `unit`; NaN while there is none: out of service, not selected, not "
          "read yet, not valid.")
      .def_property_readonly(
          "unit", [](const P& p) { return p->UnitéEtalonnage(); },
          "Unit of value, limits and tare, as its row says it.")
      .def_property_readonly("state", &Etat<Capteur>,
                             "'ok', 'off', 'not selected', 'not valid', 'overrun', 'DANGER', and "
                             "', old since 3.2 s' behind it.")
      .def_property_readonly(
          "age", [](const P& p) { return p->Age(); },
          "Seconds since the oldest of what the value is made from was read.")
      .def_property_readonly(
          "old", [](const P& p) { return p->EstVieux(); },
          "The reading is older than its device leaves it when all is well.")
      .def_property_readonly(
          "read", [](const P& p) { return p->EstLu(); }, "A first reading has come.")
      .def_property_readonly(
          "points", [](const P& p) { return p->ValeurEnPoints(); },
          "Points of the channel after zero and integration.")
      .def_property_readonly(
          "limits",
          [](const P& p) { return EntreLesDeux(p->MiniCapteurUnité(), p->MaxiCapteurUnité()); },
          "(low, high) in `unit`; None without limits.")
      .def_property_readonly(
          "minimum", [](const P& p) { return p->MiniDétecté(); },
          "Smallest reading since the last `reset_extremes`.")
      .def_property_readonly(
          "maximum", [](const P& p) { return p->MaxiDétecté(); },
          "Largest reading since the last `reset_extremes`.")
      .def_property_readonly(
          "tare_value", [](const P& p) { return p->ValeurTare(); },
          "What the tare takes off each reading, in `unit`; 0 without one.")
      .def_property_readonly("busy", &EstOccupé,
                             "A zero or a tare is being measured: readings do not count yet.")
      .def_property_readonly(
          "in_danger", [](const P& p) { return p->AU(); }, "The sensor fires the stop at present.")
      .def_property_readonly(
          "label", [](const P& p) { return p->Label(); },
          "Name by which rows and programs refer to it.")
      .def_property_readonly(
          "name", [](const P& p) { return p->NomDuCapteur(); }, "Name of its row.")
      .def_property_readonly(
          "key", [](const P& p) { return p->Key(); }, "\"Index\" of its row.")
      .def_property_readonly(
          "channel", [](const P& p) { return NomDuCanal(p->Canal()); },
          "'board/block/channel'; None for one that is made from others.")
      .def_property_readonly(
          "calibrated", [](const P& p) { return p->DateEtalonnage(); },
          "Date of the calibration, as its row says it.")
      .def_property_readonly(
          "calibrated_by", [](const P& p) { return p->NomEtalonneur(); }, "Who calibrated it.")
      .def_property_readonly(
          "can_zero", [](const P& p) { return p->RazAutorise_bln(); }, "Its row allows a zero.")
      .def("zero", &RemetAZéro,
           "Begins to measure a zero over the readings that its row says; `busy` until it is done. "
           "Raises FrameStopped while a stop is latched, UsageError where the row allows none.")
      .def(
          "cancel_zero", [](const P& p) { Agit(p, [](Capteur& c) { c.AnnuleRaz(); }); },
          "Takes the zero back.")
      .def(
          "tare",
          [](const P& p, double à) {
            if (EstOccupé(p))
              throw Erreur("UsageError", "sensor " + p->Label() + ": it is measuring");
            Agit(p, [&](Capteur& c) { c.Tare(Valeur(à)); });
            p.LaSession().CommenceUneTare(*p);
          },
          py::arg("reading") = 0.0,
          "Begins to measure a tare, behind which the present input reads `reading`, in `unit`; "
          "`busy` until it is done.")
      .def(
          "cancel_tare", [](const P& p) { Agit(p, [](Capteur& c) { c.AnnuleTare(); }); },
          "Takes the tare back.")
      .def(
          "reset_extremes", [](const P& p) { p.LaSession().Fait([&] { p->RazMaxiDétecté(); }); },
          "`minimum` and `maximum` begin anew with the present reading.")
      .def("__repr__", [](const P& p) {
        if (!p.LaSession().EstOuverte()) return Représente(p, "Sensor", {});
        return Représente(p, "Sensor", p->Label(), p->UnitéEtalonnage());
      });
}

void LieLaCommande(py::module_& module) {
  using P = Poignée<Commande>;
  py::class_<P>(module, "Command", "An output of the frame in engineering units.")
      .def_property_readonly(
          "value", [](const P& p) { return p->ValeurCouranteEnUnité(); },
          "Value asked for, in `unit`; that of the channel out of service.")
      .def_property_readonly(
          "unit", [](const P& p) { return p->UnitéEtalonnage(); },
          "Unit of the value and of its limits.")
      .def("set", &Met, py::arg("value"), py::arg("unit") = py::none(), py::kw_only(),
           py::arg("clamp") = false,
           "Drives the output to `value` at once. `unit`, where it is given, must be the command's "
           "own. With `clamp` a value beyond the limits becomes the nearest one. Raises UsageError "
           "for a value outside, a wrong unit, a command out of service; FrameStopped while a stop "
           "is latched.")
      .def_property(
          "enabled", [](const P& p) { return p->Enabled(); }, &MetEnService<Commande>,
          "In service: only then it drives its channel.")
      .def_property_readonly("state", &Etat<Commande>,
                             "'ok', 'off', 'not reached', 'saturated', 'held by a stop'.")
      .def_property_readonly(
          "limits", [](const P& p) { return EntreLesDeux(p->MiniCommande(), p->MaxiCommande()); },
          "(low, high) in `unit`.")
      .def_property_readonly(
          "rest", [](const P& p) { return p->ValeurInitiale(); },
          "Value to which a stop drives it, in `unit`.")
      .def_property_readonly(
          "reached", [](const P& p) { return p->Atteinte(); },
          "The value has reached the device, as far as its link can tell.")
      .def_property_readonly(
          "saturated", [](const P& p) { return p->SortieSaturée(); },
          "The value stands at a working limit.")
      .def_property_readonly(
          "label", [](const P& p) { return p->Label(); },
          "Name by which rows and programs refer to it.")
      .def_property_readonly(
          "name", [](const P& p) { return p->NomDeLaCommande(); }, "Name of its row.")
      .def_property_readonly(
          "key", [](const P& p) { return p->Key(); }, "\"Index\" of its row.")
      .def_property_readonly(
          "channel", [](const P& p) { return NomDuCanal(p->Canal()); },
          "'board/block/channel'; None without one.")
      .def("__repr__", [](const P& p) {
        if (!p.LaSession().EstOuverte()) return Représente(p, "Command", {});
        return Représente(p, "Command", p->Label(), p->UnitéEtalonnage());
      });
}

void LieLEntrée(py::module_& module) {
  using P = Poignée<EntréeLogique>;
  py::class_<P>(module, "Input", "An on/off input of the frame.")
      .def_property_readonly(
          "active", [](const P& p) { return p->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif; },
          "On, behind the filter against bounces.")
      .def_property_readonly(
          "value", [](const P& p) { return publication::MesureDe(*p).valeur; },
          "1.0 on, 0.0 off, NaN for a source that tells nothing.")
      .def_property_readonly(
          "label", [](const P& p) { return p->Label(); },
          "Name by which rows and programs refer to it.")
      .def_property_readonly(
          "name", [](const P& p) { return p->NomDeEntréeLogique(); }, "Name of its row.")
      .def_property_readonly(
          "key", [](const P& p) { return p->Key(); }, "\"Index\" of its row.")
      .def("__bool__", [](const P& p) { return p->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif; })
      .def("__repr__", [](const P& p) {
        return Représente(p, "Input", p.LaSession().EstOuverte() ? p->Label() : "");
      });
}

void LieLaSortie(py::module_& module) {
  using P = Poignée<SortieLogique>;
  py::class_<P>(module, "Output", "An on/off output of the frame.")
      .def(
          "on", [](const P& p) { Commute(p, true); },
          "Switches it on at once. Raises FrameStopped while a stop is latched.")
      .def(
          "off", [](const P& p) { Commute(p, false); }, "Switches it off at once.")
      .def_property(
          "active", [](const P& p) { return p->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif; },
          &Commute, "The state that it was given last.")
      .def_property_readonly(
          "reached", [](const P& p) { return p->Atteinte(); },
          "The state has reached the device, as far as its link can tell.")
      .def_property_readonly("state", &Etat<SortieLogique>, "'ok' or 'not reached'.")
      .def_property_readonly(
          "label", [](const P& p) { return p->Label(); },
          "Name by which rows and programs refer to it.")
      .def_property_readonly(
          "name", [](const P& p) { return p->NomDeLaSortieLogique(); }, "Name of its row.")
      .def_property_readonly(
          "key", [](const P& p) { return p->Key(); }, "\"Index\" of its row.")
      .def("__bool__", [](const P& p) { return p->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif; })
      .def("__repr__", [](const P& p) {
        return Représente(p, "Output", p.LaSession().EstOuverte() ? p->Label() : "");
      });
}

void LieLeWatchdog(py::module_& module) {
  using P = Poignée<Watchdog>;
  py::class_<P>(module, "WatchdogBoard", "What drops the safety chain when the passes end.")
      .def_property(
          "enabled", [](const P& p) { return p->Enabled(); }, &MetEnService<Watchdog>,
          "Armed: passes must come, or its contact opens.")
      .def_property_readonly(
          "timeout", [](const P& p) { return p->Temps(); }, "Seconds.")
      .def_property_readonly(
          "stopped", [](const P& p) { return p->EnArrêt(); },
          "From a stop until its acknowledgement.")
      .def_property_readonly("state", &Etat<Watchdog>, "'ok', 'off' or 'stopped'.")
      .def("__repr__", [](const P& p) {
        if (!p.LaSession().EstOuverte()) return std::string("<Watchdog of a closed frame>");
        return "<Watchdog: " + host::NombreEnTexte(p->Temps()) + " s, " + Etat(p) + ">";
      });
}

void LieLeCanal(py::module_& module) {
  using P = Poignée<Canal>;
  py::class_<P>(module, "Channel", "One line of a board.")
      .def_property_readonly(
          "name", [](const P& p) { return p->Nom(); }, "Name of its row.")
      .def_property_readonly(
          "key", [](const P& p) { return p->Key(); }, "\"Index\" of its row.")
      .def_property_readonly(
          "points", [](const P& p) { return p->ValeurCanal(); }, "What it holds, in points.")
      .def_property_readonly(
          "age", [](const P& p) { return p->Age(); }, "Seconds since it was read.")
      .def_property_readonly(
          "old", [](const P& p) { return p->EstVieux(); },
          "Older than its device leaves it when all is well.")
      .def_property_readonly("state", &Etat<Canal>, "'ok', 'off' or 'not read yet'.")
      .def("__repr__", [](const P& p) {
        return Représente(p, "Channel", p.LaSession().EstOuverte() ? p->Nom() : "");
      });
}

py::list LesCanaux(const Poignée<Carte>& p) {
  py::list liste;
  for (const FonctionRef& bloc : p->LesFonctions()) {
    for (const CanalRef& canal : *bloc->Canals()) {
      liste.append(Poignée<Canal>(p.Partagée(), canal.Brut()));
    }
  }
  return liste;
}

void LieLaCarte(py::module_& module) {
  using P = Poignée<Carte>;
  py::class_<P>(module, "Board", "One board or instrument of the frame.")
      .def_property_readonly(
          "name", [](const P& p) { return p->NomDeLaCarte(); }, "Name of its row.")
      .def_property_readonly(
          "key", [](const P& p) { return p->Key(); }, "\"Index\" of its row.")
      .def_property_readonly("channels", &LesCanaux, "Its channels, block by block.")
      .def("__repr__", [](const P& p) {
        if (!p.LaSession().EstOuverte()) return std::string("<Board of a closed frame>");
        return "<Board " + p->NomDeLaCarte() + ">";
      });
}

}  // namespace

void LieLesObjets(py::module_& module) {
  LieLeCapteur(module);
  LieLaCommande(module);
  LieLEntrée(module);
  LieLaSortie(module);
  LieLeWatchdog(module);
  LieLeCanal(module);
  LieLaCarte(module);
}

}  // namespace zuma::python
