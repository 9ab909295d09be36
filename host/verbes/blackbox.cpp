// What a black box tells of the last minute of a frame.
#include <cstdio>

#include "host/configuration.h"
#include "host/ecrivain.h"
#include "host/fichier_en_ajout.h"
#include "host/regard/cas.h"
#include "host/regard/choix.h"
#include "host/regard/recit.h"
#include "host/regard/textes.h"
#include "host/verbes/tableau.h"
#include "host/verbes/verbes.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::host {

using publication::Echantillon;
using publication::Genre;
using publication::Lecteur;
using publication::Lu;

namespace {

constexpr double kAprès = 60;  // seconds behind a stop that its account looks at

// The published one that runs, or else the last one that a dead host left.
std::string LaBoîte(const OptionsBoîte& options) {
  if (!options.où.empty()) return LaPublication(options.où, options.chassis);
  return LaDernièreBoîte();
}

class Boîte {
 public:
  explicit Boîte(const std::string& fichier) : lecteur_(fichier), vivante_(lecteur_.EstEnMarche()) {
    aDesEchantillons_ = lecteur_.LitLeDernier(dernier_);
  }

  [[nodiscard]] const Lecteur& LeLecteur() const { return lecteur_; }

  void EnTexte(const Terminal& terminal) const {
    std::printf("started %s\n", HeureUtc(lecteur_.DépartUtc()).c_str());
    if (aDesEchantillons_) {
      MontreLeDernier(terminal);
    } else {
      DitQuIlNYARien(lecteur_);
    }
    MontreLesEvènements(terminal);
    for (const std::uint64_t arrêt : LesArrêts(lecteur_)) MontreLArrêt(arrêt, terminal);
  }

  void EnJson() const {
    if (aDesEchantillons_) {
      MontreLeDernierEnJson();
    } else {
      DitQuIlNYARien(lecteur_);
    }
    PourChaqueEvènement([&](const publication::EvènementLu& e) {
      ImprimeEnJson({{"event", MotDe(e.genre)},
                     {"time_s", e.secondes},
                     {"utc", HeureUtc(MomentUtc(lecteur_, e.secondes))},
                     {"pass", e.passe},
                     {"text", Phrase(lecteur_.LeChassis(), e)}});
    });
    for (const std::uint64_t arrêt : LesArrêts(lecteur_)) ImprimeLArrêt(arrêt);
  }

 private:
  template <class Prend>
  void PourChaqueEvènement(Prend&& prend) const {
    publication::EvènementLu e;
    for (auto n = lecteur_.PremierEvènement(); n < lecteur_.EvènementSuivant(); ++n) {
      if (lecteur_.Lit(n, e) == Lu::Bon) prend(e);
    }
  }

  void MontreLeDernierEnJson() const {
    auto json = ChassisEnJson(lecteur_, dernier_, vivante_);
    auto& objets = json["objects"] = nlohmann::ordered_json::array();
    for (std::size_t rang = 0; rang < lecteur_.LeChassis().objets.size(); ++rang) {
      objets.push_back(ObjetEnJson(lecteur_.LeChassis().objets[rang], dernier_[rang]));
    }
    ImprimeEnJson(json);
  }

  void MontreLeDernier(const Terminal& terminal) const {
    std::printf("%s\nlast sample %s, pass %llu; outputs as they were last written:\n",
                LigneDuChassis(lecteur_, dernier_, vivante_).c_str(),
                HeureUtc(MomentUtc(lecteur_, dernier_.Secondes())).c_str(),
                static_cast<unsigned long long>(dernier_.Passe()));
    const auto montre = [&](bool sorties) {
      for (const std::size_t rang : ObjetsDAbord(lecteur_.LeChassis())) {
        const auto& objet = lecteur_.LeChassis().objets[rang];
        const bool sortie = objet.genre == Genre::Commande || objet.genre == Genre::Sortie ||
                            objet.genre == Genre::Watchdog;
        if (sortie != sorties) continue;
        std::printf("%s\n", LigneDeLObjet(objet, dernier_[rang], terminal, false).c_str());
      }
    };
    montre(true);
    std::printf("sensors and inputs:\n");
    montre(false);
  }

  void MontreLesEvènements(const Terminal& terminal) const {
    std::printf("%s\n", terminal.Colore("events", Ton::Titre).c_str());
    PourChaqueEvènement([&](const publication::EvènementLu& e) {
      std::printf("  %s s  pass %-8llu %s\n", ADroite(NombreEnTexte(e.secondes), 11).c_str(),
                  static_cast<unsigned long long>(e.passe),
                  Phrase(lecteur_.LeChassis(), e).c_str());
    });
  }

  void MontreLArrêt(std::uint64_t arrêt, const Terminal& terminal) const {
    const auto récit = Raconte(lecteur_, arrêt, kAprès);
    if (!récit) return;
    const std::string titre = "stop at " + NombreEnTexte(récit->secondes) + " s, " +
                              HeureUtc(MomentUtc(lecteur_, récit->secondes));
    std::printf("\n%s\n", terminal.Colore(titre, Ton::Danger).c_str());
    for (const Paragraphe& paragraphe : EnMots(*récit)) {
      std::printf("%s\n", terminal.Colore(paragraphe.question, Ton::Titre).c_str());
      for (const std::string& réponse : paragraphe.réponses) {
        std::printf("  %s\n", linux_::UneSeuleLigne(réponse).c_str());
      }
    }
  }

  void ImprimeLArrêt(std::uint64_t arrêt) const {
    const auto récit = Raconte(lecteur_, arrêt, kAprès);
    if (!récit) return;
    nlohmann::ordered_json json{{"stop_s", récit->secondes}, {"pass", récit->passe}};
    for (const Paragraphe& paragraphe : EnMots(*récit)) {
      json[paragraphe.question] = paragraphe.réponses;
    }
    ImprimeEnJson(json);
  }

  Lecteur lecteur_;
  bool vivante_;
  bool aDesEchantillons_ = false;
  Echantillon dernier_;
};

int EcritLaPage(const Lecteur& lecteur, const std::string& nom) {
  const auto arrêts = LesArrêts(lecteur);
  if (arrêts.empty()) throw MauvaisUsage("there is no stop in this black box to make a page of");
  const std::string page = PageDeLArrêt(lecteur, arrêts.back(), Fenêtre());
  const int erreur = FichierEnAjout(nom).Ajoute(page);
  if (erreur != 0) throw MauvaisUsage(nom + ": " + Raison(erreur));
  std::printf("%s written\n", nom.c_str());
  return kBon;
}

}  // namespace

int Blackbox(const OptionsBoîte& options) {
  const Boîte boîte(LaBoîte(options));
  if (!options.svg.empty()) return EcritLaPage(boîte.LeLecteur(), options.svg);
  if (options.json) {
    boîte.EnJson();
  } else {
    boîte.EnTexte(Terminal());
  }
  return kBon;
}

}  // namespace zuma::host
