#include "hote/lecture_python.h"

#include <memory>
#include <optional>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include "host/enregistrement_lu.h"
#include "host/regard/choix.h"
#include "host/regard/textes.h"
#include "publication/lecture/lecteur.h"

namespace zuma::python {
namespace {

namespace py = pybind11;
using namespace publication;
using py::literals::operator""_a;

/// A publication and the memory that it lies in.
struct Publié {
  explicit Publié(const std::string& nom)
      : fichier(nom), zone(Zone::EnLecture(nom)), lecteur(zone) {}

  std::string fichier;
  std::shared_ptr<const Zone> zone;
  Lecteur lecteur;
  Echantillon échantillon{};
};

// Numbers without a value are left out of a description.
py::object OuNone(const std::optional<double>& nombre) {
  return py::cast(nombre);
}

py::dict EnDict(const ObjetPublié& o) {
  return py::dict("kind"_a = MotDe(o.genre), "key"_a = o.clé, "label"_a = o.label, "name"_a = o.nom,
                  "full_name"_a = NomComplet(o), "unit"_a = o.unité, "low"_a = OuNone(o.mini),
                  "high"_a = OuNone(o.maxi), "calibrated"_a = o.étalonné,
                  "calibrated_by"_a = o.parQui, "channel"_a = o.canal);
}

py::dict Description(const Publié& p) {
  const ChassisPublié& c = p.lecteur.LeChassis();
  py::list objets;
  for (const ObjetPublié& objet : c.objets) objets.append(EnDict(objet));
  return py::dict("database"_a = c.fichier, "frame"_a = c.index, "name"_a = c.nom,
                  "simulated"_a = c.simulé, "rate"_a = c.fréquence, "program"_a = c.programme,
                  "parameters"_a = c.paramètres, "objects"_a = objets);
}

// One sample into numbers that stay as they are; false when it is overwritten or not there yet.
std::string Lit(Publié& p, std::uint64_t numéro, py::array_t<double>& valeurs,
                py::array_t<double>& âges) {
  const Lu lu = p.lecteur.Lit(numéro, p.échantillon);
  if (lu == Lu::PasEncore) return "later";
  if (lu == Lu::Dépassé) return "gone";
  auto v = valeurs.mutable_unchecked<1>();
  auto a = âges.mutable_unchecked<1>();
  for (py::ssize_t i = 0; i < v.shape(0); ++i) {
    const Mesure mesure = p.échantillon[static_cast<std::size_t>(i)];
    v(i) = mesure.valeur;
    a(i) = mesure.âge;
  }
  return "good";
}

py::list EtatsDuDernier(const Publié& p) {
  py::list états;
  const auto& objets = p.lecteur.LeChassis().objets;
  for (std::size_t i = 0; i < objets.size(); ++i) {
    états.append(host::EtatEnTexte(objets[i], p.échantillon[i]));
  }
  return états;
}

py::list Evènements(const Publié& p, std::uint64_t depuis) {
  py::list liste;
  EvènementLu lu;
  for (auto n = std::max(depuis, p.lecteur.PremierEvènement()); n < p.lecteur.EvènementSuivant();
       ++n) {
    if (p.lecteur.Lit(n, lu) != Lu::Bon) continue;
    liste.append(py::dict("number"_a = n, "time"_a = lu.secondes, "kind"_a = host::MotDe(lu.genre),
                          "object"_a = lu.objet, "value"_a = lu.valeur, "text"_a = lu.texte,
                          "line"_a = host::Phrase(p.lecteur.LeChassis(), lu)));
  }
  return liste;
}

// The words of the ring where they lie, one row for each place: nothing is copied, and the memory
// stays for as long as the array does.
py::array Anneau(const std::shared_ptr<Publié>& p) {
  const auto mots = p->zone->Mots();
  const auto champ = [&](EnTête rang) {
    return static_cast<py::ssize_t>(publication::Lit(mots, rang));
  };
  const py::ssize_t parPlace = champ(EnTête::EchantillonMots);
  py::array anneau(py::dtype::of<std::uint64_t>(), {champ(EnTête::EchantillonsPlaces), parPlace},
                   {parPlace * 8, py::ssize_t{8}},
                   reinterpret_cast<const std::uint64_t*>(
                       &mots[static_cast<std::size_t>(champ(EnTête::Echantillons))]),
                   py::cast(p));
  anneau.attr("setflags")("write"_a = false);
  return anneau;
}

py::list LesPubliées() {
  py::list liste;
  for (const Publiée& p : Publications(DossierDesPublications())) {
    liste.append(py::make_tuple(p.fichier, p.vivante));
  }
  return liste;
}

py::array_t<double> Tableau(const std::vector<double>& nombres) {
  return py::array_t<double>(static_cast<py::ssize_t>(nombres.size()), nombres.data());
}

py::dict LitUnEnregistrement(const std::string& fichier) {
  const host::EnregistrementLu lu = host::LitLEnregistrement(fichier);
  py::list colonnes;
  for (const host::ColonneLue& c : lu.colonnes) {
    colonnes.append(py::dict("name"_a = c.nom, "unit"_a = c.unité, "label"_a = c.label,
                             "calibrated"_a = c.étalonné, "calibrated_by"_a = c.parQui,
                             "values"_a = Tableau(c.valeurs)));
  }
  py::list lacunes;
  for (const host::Lacune& l : lu.lacunes) lacunes.append(py::make_tuple(l.rangées, l.de, l.à));
  return py::dict("time"_a = Tableau(lu.secondes), "columns"_a = colonnes, "gaps"_a = lacunes,
                  "cut"_a = lu.coupé, "texts"_a = lu.textes);
}

}  // namespace

void LieLaLecture(py::module_& module) {
  py::class_<Publié, std::shared_ptr<Publié>>(module, "Reader",
                                              "A publication, read from any process.")
      .def(py::init<const std::string&>(), py::arg("file"))
      .def_property_readonly("file", [](const Publié& p) { return p.fichier; })
      .def_property_readonly("pid", [](const Publié& p) { return p.lecteur.Processus(); })
      .def_property_readonly("started", [](const Publié& p) { return p.lecteur.DépartUtc(); })
      .def_property_readonly("ended", [](const Publié& p) { return !p.lecteur.EstEnMarche(); })
      .def_property_readonly("next", [](const Publié& p) { return p.lecteur.Suivant(); })
      .def_property_readonly("first", [](const Publié& p) { return p.lecteur.Premier(); })
      .def("since", [](const Publié& p, double s) { return p.lecteur.PremierDepuis(s); })
      .def("refresh", [](Publié& p) { return p.lecteur.Actualise(); })
      .def("description", &Description)
      .def("read", &Lit)
      .def("header",
           [](const Publié& p) {
             const Echantillon& e = p.échantillon;
             return py::make_tuple(e.Numéro(), e.Secondes(), e.Passe(), e.Arrêt(), e.Rafraîchi(),
                                   e.Rafraîchissements());
           })
      .def("states", &EtatsDuDernier)
      .def("events", &Evènements)
      .def("find",
           [](const Publié& p, const std::string& nom) {
             return host::ObjetsNommés(p.lecteur.LeChassis(), {nom});
           })
      .def("ring", &Anneau);
  module.def("publications", &LesPubliées);
  module.def("publication", &host::LaPublication, py::arg("where"), py::arg("frame"));
  module.def("read_recording", &LitUnEnregistrement);
}

}  // namespace zuma::python
