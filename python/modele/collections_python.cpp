// The seven collections: by key, by rank, and as Python walks what it walks.
#include <optional>
#include <string_view>

#include "core/chassis.h"
#include "core/collections.h"
#include "modele/liaisons.h"
#include "modele/tables.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

template <class C>
struct DeCollection;
template <class T, RèglesCollection kSes>
struct DeCollection<Collection<T, kSes>> {
  using Membre = T;
  static constexpr RèglesCollection kRègles = kSes;
};

template <class C>
using Membre = typename DeCollection<C>::Membre;

// Of a key: whatever the collection does with its failures.
template <class C>
Ref<Membre<C>> ParClé(const C& collection, const std::string& clé) {
  try {
    if (Ref<Membre<C>> objet = collection.Item(clé)) return objet;
  } catch (const Echec&) {  // Python tells it in its own way
    throw py::key_error(clé);
  }
  throw py::key_error(clé);
}

template <class C>
Ref<Membre<C>> ParRang(const C& collection, std::ptrdiff_t rang) {
  const auto nombre = static_cast<std::ptrdiff_t>(collection.Count());
  const std::ptrdiff_t place = rang < 0 ? rang + nombre : rang;
  if (place < 0 || place >= nombre) throw py::index_error(std::to_string(rang));
  return collection.Photo().begin()[place];
}

template <class C>
bool Contient(C& collection, const py::object& quoi) {
  if (py::isinstance<py::str>(quoi)) {
    try {
      return static_cast<bool>(collection.Item(quoi.cast<std::string>()));
    } catch (const Echec&) {
      return false;
    }
  }
  if (!py::isinstance<PoignéeDe<Membre<C>>>(quoi)) return false;
  const void* cherché = quoi.cast<PoignéeDe<Membre<C>>&>().Adresse();
  for (const auto& objet : collection.Photo()) {
    if (objet.Brut() == cherché) return true;
  }
  return false;
}

template <class C>
std::vector<Ref<Membre<C>>> Tous(const C& collection) {
  const auto photo = collection.Photo();
  return {photo.begin(), photo.end()};
}

template <class C>
std::string Texte(const C& collection) {
  return "<" + std::to_string(collection.Count()) + " of a collection>";
}

// What Python asks of a sequence and of a dictionary.
template <class C>
void LieLaMarche(Classe<C>& classe) {
  classe.Méthode("__len__", Genre::Bref, [](C& c) { return c.Count(); })
      .Méthode(
          "__getitem__", Genre::Bref, [](C& c, const std::string& clé) { return ParClé(c, clé); },
          "clé"_a)
      .Méthode(
          "__getitem__", Genre::Bref, [](C& c, std::ptrdiff_t rang) { return ParRang(c, rang); },
          "rang"_a, "By key (text) or by rank (number, from 0).")
      .Méthode(
          "__contains__", Genre::Bref,
          [](C& c, const py::object& quoi) { return Contient(c, quoi); }, "quoi"_a)
      .Lecture("_membres", [](C& c) { return Tous(c); });
  classe.Brute().def(
      "__iter__", [](const py::object& soi) { return py::iter(soi.attr("_membres")); },
      "Walks the members of this moment.");
}

template <class C>
void LieLesOpérations(Classe<C>& classe) {
  using T = Membre<C>;
  constexpr RèglesCollection kRègles = DeCollection<C>::kRègles;
  classe.Méthode(
      "Add", Genre::Bref, [](C& c, const std::string& clé) { return c.Add(clé); }, "sKey"_a,
      "Makes a member under that key and returns it.");
  if constexpr (kRègles.accepteObjet) {
    classe.Méthode(
        "Add", Genre::Bref,
        [](C& c, const std::string& clé, const Ref<T>& objet) { return c.Add(clé, objet); },
        "sKey"_a, "monObjet"_a, "Stores an object that is there already.");
  }
  classe
      .Méthode(
          "Référence", Genre::Bref,
          [](C& c, const Ref<T>& objet, const std::string& clé) {
            if (!objet) throw Echec::ObjetAbsent();
            return c.Référence(objet, clé);
          },
          "objet"_a, "sKey"_a, "Stores an object under that key, its own left alone.")
      .Méthode(
          "Item", Genre::Bref,
          [](C& c, const std::optional<std::string>& clé) {
            return c.Item(clé ? std::optional<std::string_view>(*clé) : std::nullopt);
          },
          "vntIndexKey"_a, "The object of that key; an absent one fails with 5.")
      .Lecture(
          "Count", [](C& c) { return c.Count(); }, "Number of members.")
      .Méthode(
          "Remove", Genre::Bref, [](C& c, const std::string& clé) { c.Remove(clé); },
          "vntIndexKey"_a, "Removes the member of that key; an absent one fails with 5.")
      .Méthode(
          "RetireSi", Genre::Bref,
          [](C& c, const std::function<bool(const Ref<T>&)>& critère) { c.RetireSi(critère); },
          "critère"_a, "Removes the members for which critère(member) holds.");
  if constexpr (kRègles.itemIndex) {
    classe.Méthode(
        "ItemIndex", Genre::Bref, [](C& c, const Valeur& clé) { return c.ItemIndex(clé); },
        "vntIndexKey"_a, "The first member whose Key is that; None without.");
  }
  if constexpr (kRègles.modeEdition) {
    classe.Lecture(
        "ModeEdition", [](C& c) { return c.ModeEdition(); },
        "True while a member is being calibrated.");
  }
}

template <class C>
void Lie(py::module_& m, const char* nom, const char* doc) {
  Classe<C> classe(m, nom, doc);
  LieLaMarche(classe);
  LieLesOpérations(classe);
}

}  // namespace

void LieLesCollections(py::module_& m) {
  Lie<Canals>(m, "Canals", "Channels of a block.");
  Lie<Fonctions>(m, "Fonctions", "Blocks of a board.");
  Lie<Cartes>(m, "Cartes", "Boards of a frame.");
  Lie<Capteurs>(m, "Capteurs", "Sensors of a frame, or those that make one up.");
  Lie<Commandes>(m, "Commandes", "Commands of a frame.");
  Lie<EntréeLogiques>(m, "EntréeLogiques", "Logic inputs of a frame.");
  Lie<SortieLogiques>(m, "SortieLogiques", "Logic outputs of a frame.");
}

}  // namespace zuma::python::modele
