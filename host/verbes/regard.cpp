// The verbs that show a frame that runs: list, show, watch.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

#include "host/configuration.h"
#include "host/interruption.h"
#include "host/regard/choix.h"
#include "host/verbes/tableau.h"
#include "host/verbes/verbes.h"

namespace zuma::host {

using publication::Echantillon;
using publication::Lecteur;

namespace {

struct Compte {
  publication::Genre genre;
  const char* pluriel;
};
constexpr std::array<Compte, 5> kComptes{{{publication::Genre::Capteur, "sensors"},
                                          {publication::Genre::Commande, "commands"},
                                          {publication::Genre::Entrée, "inputs"},
                                          {publication::Genre::Sortie, "outputs"},
                                          {publication::Genre::Canal, "channels"}}};

std::string Contenu(const publication::ChassisPublié& chassis) {
  std::string texte = "   ";
  for (const auto& [genre, pluriel] : kComptes) {
    const auto nombre = std::ranges::count(chassis.objets, genre, &publication::ObjetPublié::genre);
    texte += " " + std::to_string(nombre) + " " + pluriel;
  }
  return texte;
}

void Imprime(const publication::Publiée& publiée, bool json) {
  const Lecteur lecteur(publiée.fichier);
  Echantillon dernier;
  if (!lecteur.LitLeDernier(dernier)) return DitQuIlNYARien(lecteur);
  if (json) {
    auto ligne = ChassisEnJson(lecteur, dernier, publiée.vivante);
    ligne["file"] = publiée.fichier;
    for (const auto& [genre, pluriel] : kComptes) {
      ligne[pluriel] =
          std::ranges::count(lecteur.LeChassis().objets, genre, &publication::ObjetPublié::genre);
    }
    ImprimeEnJson(ligne);
    return;
  }
  std::printf("%s\n%s\n    %s\n", LigneDuChassis(lecteur, dernier, publiée.vivante).c_str(),
              Contenu(lecteur.LeChassis()).c_str(), publiée.fichier.c_str());
}

void ImprimeLesNoms(const publication::Publiée& publiée) {
  const Lecteur lecteur(publiée.fichier);
  for (const auto& objet : lecteur.LeChassis().objets) {
    std::printf("%s\n", AGauche(NomComplet(objet), Largeur(NomComplet(objet))).c_str());
  }
}

std::vector<std::size_t> ObjetsVoulus(const Lecteur& lecteur, const OptionsRegard& options) {
  return options.noms.empty() ? ObjetsDAbord(lecteur.LeChassis())
                              : ObjetsNommés(lecteur.LeChassis(), options.noms);
}

// The objects again and again, those that changed marked.
class Montre {
 public:
  // `enPlace`: each view takes the place of the one before, where there is a terminal.
  Montre(const OptionsRegard& options, const std::string& fichier, bool enPlace)
      : options_(options),
        sontEnPlace_(enPlace),
        lecteur_(fichier),
        rangs_(ObjetsVoulus(lecteur_, options)) {}

  // False once the host has ended.
  bool Vue() {
    const bool vivante = lecteur_.EstEnMarche();
    lecteur_.Actualise();
    if (!lecteur_.LitLeDernier(échantillon_)) {
      DitQuIlNYARien(lecteur_);
      return vivante;
    }
    if (options_.json) {
      MontreEnJson(vivante);
    } else {
      MontreEnTable(vivante);
    }
    return vivante;
  }

 private:
  void MontreEnJson(bool vivante) const {
    auto json = ChassisEnJson(lecteur_, échantillon_, vivante);
    auto& objets = json["objects"] = nlohmann::ordered_json::array();
    for (const std::size_t rang : rangs_) {
      objets.push_back(ObjetEnJson(lecteur_.LeChassis().objets[rang], échantillon_[rang]));
    }
    ImprimeEnJson(json);
    std::fflush(stdout);
  }

  void MontreEnTable(bool vivante) {
    std::vector<std::string> lignes{LigneDuChassis(lecteur_, échantillon_, vivante)};
    avant_.resize(rangs_.size());
    for (std::size_t i = 0; i < rangs_.size(); ++i) {
      std::string ligne = LigneDeLObjet(lecteur_.LeChassis().objets[rangs_[i]],
                                        échantillon_[rangs_[i]], Sans(), false);
      const bool changé = !avant_[i].empty() && avant_[i] != ligne;
      lignes.push_back(LigneDeLObjet(lecteur_.LeChassis().objets[rangs_[i]],
                                     échantillon_[rangs_[i]], terminal_, changé));
      avant_[i] = std::move(ligne);
    }
    if (sontEnPlace_) {
      terminal_.Montre(lignes);
    } else {
      for (const std::string& ligne : lignes) std::printf("%s\n", ligne.c_str());
    }
  }

  // Text alone, to compare.
  static const Terminal& Sans() {
    static const Terminal kSans(false);
    return kSans;
  }

  const OptionsRegard& options_;
  bool sontEnPlace_;
  Lecteur lecteur_;
  std::vector<std::size_t> rangs_;
  Echantillon échantillon_;
  std::vector<std::string> avant_;
  Terminal terminal_;
};

// The place of a host that still loads, or whose map found no room.
bool EstVide(const publication::Publiée& publiée) {
  std::error_code ignorée;
  const auto octets = std::filesystem::file_size(publiée.fichier, ignorée);
  return publiée.vivante && octets < publication::kMotsDEnTête * sizeof(publication::Mot);
}

}  // namespace

int Liste(const OptionsListe& options) {
  const std::string dossier = publication::DossierDesPublications();
  const auto publiées = publication::Publications(dossier);
  if (publiées.empty() && !options.json && !options.noms) {
    std::printf("no frame runs on this machine, and none was left in %s\n", dossier.c_str());
  }
  int code = kBon;
  for (const publication::Publiée& publiée : publiées) {
    if (EstVide(publiée)) continue;
    try {
      if (!options.noms) Imprime(publiée, options.json);
      if (options.noms && publiée.vivante) ImprimeLesNoms(publiée);
    } catch (const publication::Illisible& refus) {
      std::fprintf(stderr, "zuma: %s\n", refus.what());
      code = kProblèmes;
    }
  }
  return code;
}

int Show(const OptionsRegard& options) {
  const std::string fichier = LaPublication(options.où, options.chassis);
  Montre montre(options, fichier, false);
  montre.Vue();
  return kBon;
}

int Watch(const OptionsWatch& options) {
  const std::string fichier = LaPublication(options.où, options.chassis);
  const Interruption interruption;
  Montre montre(options, fichier, true);
  const auto pas = std::chrono::duration<double>(1 / options.cadence);
  const auto début = std::chrono::steady_clock::now();
  while (montre.Vue()) {
    const auto écoulé = std::chrono::steady_clock::now() - début;
    if (Interruption::Demandée()) return kBon;
    if (options.secondes && écoulé >= std::chrono::duration<double>(*options.secondes)) return kBon;
    std::this_thread::sleep_for(pas);
  }
  std::fprintf(stderr, "zuma: the host of the frame has ended\n");
  return kProblèmes;
}

}  // namespace zuma::host
