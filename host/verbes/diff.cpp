// What differs between two frames that are published, or were.
#include <cmath>
#include <cstdio>
#include <map>

#include "host/regard/choix.h"
#include "host/regard/textes.h"
#include "host/verbes/tableau.h"
#include "host/verbes/verbes.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {

using publication::Echantillon;
using publication::Lecteur;
using publication::Mesure;
using publication::ObjetPublié;

namespace {

struct Propriété {
  const char* nom;
  std::string (*lit)(const ObjetPublié&);
};
constexpr std::array<Propriété, 9> kPropriétés{
    {{"name", [](const ObjetPublié& o) { return o.nom; }},
     {"unit", [](const ObjetPublié& o) { return o.unité; }},
     {"driver", [](const ObjetPublié& o) { return o.driver; }},
     {"channel", [](const ObjetPublié& o) { return o.canal; }},
     {"min", [](const ObjetPublié& o) { return LimiteEnTexte(o.mini); }},
     {"max", [](const ObjetPublié& o) { return LimiteEnTexte(o.maxi); }},
     {"rest", [](const ObjetPublié& o) { return LimiteEnTexte(o.repos); }},
     {"calibrated", [](const ObjetPublié& o) { return o.étalonné; }},
     {"calibrated by", [](const ObjetPublié& o) { return o.parQui; }}}};

/// One frame and its last sample.
struct Côté {
  explicit Côté(const std::string& où) : lecteur(LaPublication(où, {})) {
    vu = lecteur.LitLeDernier(dernier);
    for (std::size_t rang = 0; rang < lecteur.LeChassis().objets.size(); ++rang) {
      rangs.emplace(Clé(lecteur.LeChassis().objets[rang]), rang);
    }
  }
  static std::string Clé(const ObjetPublié& objet) {
    return std::string(publication::MotDe(objet.genre)) + " " + objet.clé;
  }

  Lecteur lecteur;
  Echantillon dernier;
  bool vu = false;
  std::map<std::string, std::size_t> rangs;
};

class Comparaison {
 public:
  explicit Comparaison(bool json) : json_(json) {}

  void Compare(const Côté& un, const Côté& autre) {
    for (const auto& [clé, rang] : un.rangs) {
      const ObjetPublié& objet = un.lecteur.LeChassis().objets[rang];
      const auto second = autre.rangs.find(clé);
      if (second == autre.rangs.end()) {
        Dit(objet, "presence", "there", "missing");
        continue;
      }
      const ObjetPublié& sien = autre.lecteur.LeChassis().objets[second->second];
      for (const auto& [nom, lit] : kPropriétés) Note(objet, nom, lit(objet), lit(sien));
      if (!un.vu || !autre.vu || objet.genre == publication::Genre::Canal) continue;
      const Mesure avant = un.dernier[rang], après = autre.dernier[second->second];
      Note(objet, "value", ValeurEnTexte(objet, avant), ValeurEnTexte(sien, après));
    }
    for (const auto& [clé, rang] : autre.rangs) {
      if (un.rangs.contains(clé)) continue;
      Dit(autre.lecteur.LeChassis().objets[rang], "presence", "missing", "there");
    }
  }
  [[nodiscard]] bool Différent() const { return différent_; }

 private:
  void Note(const ObjetPublié& objet, const char* quoi, const std::string& un,
            const std::string& autre) {
    if (un != autre) Dit(objet, quoi, un, autre);
  }
  void Dit(const ObjetPublié& objet, const char* quoi, const std::string& un,
           const std::string& autre) {
    différent_ = true;
    if (json_) {
      ImprimeEnJson(
          {{"object", Désignation(objet)}, {"what", quoi}, {"one", un}, {"other", autre}});
      return;
    }
    const std::string ligne = Désignation(objet) + ": " + quoi + ": " + un + " | " + autre;
    std::printf("%s\n", linux_::UneSeuleLigne(ligne).c_str());
  }

  bool json_;
  bool différent_ = false;
};

}  // namespace

int Diff(const OptionsDiff& options) {
  const Côté un(options.un), autre(options.autre);
  Comparaison comparaison(options.json);
  comparaison.Compare(un, autre);
  return comparaison.Différent() ? kProblèmes : kBon;
}

}  // namespace zuma::host
