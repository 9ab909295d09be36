#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>

#include "base/valeur.h"
#include "base/vidage.h"
#include "host/chassis_en_marche.h"
#include "host/configuration.h"
#include "host/drivers_charges.h"
#include "host/interruption.h"
#include "host/parametres.h"
#include "host/verbes/verbes.h"
#include "platform/linux/fichiers_linux.h"
#include "platform/linux/texte_ligne.h"
#include "sensors/lecture.h"
#include "sim/collaborateurs.h"

namespace zuma::host {
namespace {

constexpr double kPasDePasse = 0.001;  // seconds between passes

// Told before anything moves; what fails later is a failure of the dump.
void ExigeUnDossier(const std::string& fichier) {
  namespace fs = std::filesystem;
  const fs::path dossier = fs::path(fichier).parent_path();
  if (!dossier.empty() && !fs::is_directory(dossier)) {
    throw MauvaisUsage(fichier + " cannot be written: there is no folder " + dossier.string());
  }
}

// False when the dump was interrupted or the machine ended.
bool Passe(ChassisEnMarche& marche, Machine& machine, double durée) {
  for (double secondes = 0; secondes < durée;) {
    if (Interruption::Demandée() || !machine.Fini().empty()) return false;
    secondes = machine.AvanceJusquA(secondes + kPasDePasse);
    marche.Passe();
  }
  return true;
}

// The library's own blocks say nothing of how old a reading is: a block behind them does.
void AjouteLesAges(Chassis& chassis, const std::string& sortie) {
  BlocDeVidage bloc(2, "*                           Ages                           *");
  for (const CapteurRef& capteur : *chassis.Capteurs()) {
    std::array<char, 48> texte{};
    std::snprintf(texte.data(), texte.size(), "%.3f s%s", capteur->Age(),
                  EstAncien(*capteur) ? ", ancien" : "");
    bloc.Texte("Age de la lecture de " + capteur->NomDuCapteur() + " : ", texte.data());
  }
  bloc.Ajoute(chassis, sortie);
}

// The dump goes through `fichiers`; the service that the machine had comes back afterwards.
void Vide(Chassis& chassis, Plateforme& services, Fichiers& fichiers, const std::string& sortie) {
  struct Rétablit {
    Plateforme& services;
    Pointeur<Fichiers> ancien = services.fichiers;
    ~Rétablit() { services.fichiers = ancien; }
  } const rétablit{services};
  services.fichiers = &fichiers;
  chassis.AutoSave(sortie);
  AjouteLesAges(chassis, sortie);
}

// The lines grouped by object. A banner names the class; no label begins with a star.
std::string EnJson(const std::vector<std::string>& lignes) {
  auto objets = nlohmann::ordered_json::array();
  for (const std::string& ligne : lignes) {
    const std::string_view texte = SansBlancs(ligne);
    if (texte.starts_with('*')) {
      const std::size_t début = texte.find_first_not_of("* ");
      if (début == std::string_view::npos) continue;
      const std::string_view mot = texte.substr(début, texte.find_last_not_of("* ") + 1 - début);
      objets.push_back({{"class", mot}, {"lines", nlohmann::ordered_json::array()}});
      continue;
    }
    constexpr std::string_view kFinDeLibellé = " :";
    const std::size_t fin = texte.find(kFinDeLibellé);
    objets.back()["lines"].push_back(
        {{"label", texte.substr(0, fin)},
         {"value", SansBlancs(texte.substr(fin + kFinDeLibellé.size()))}});
  }
  return linux_::SansSéquence(
             objets.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)) +
         "\n";
}

bool Imprime(const OptionsDump& options, const std::vector<std::string>& lignes) {
  std::string texte;
  if (options.json) {
    texte = EnJson(lignes);
  } else {
    for (const std::string& ligne : lignes) texte += linux_::UneSeuleLigne(ligne) + "\n";
  }
  return std::fwrite(texte.data(), 1, texte.size(), stdout) == texte.size() &&
         std::fflush(stdout) == 0;
}

std::unique_ptr<Machine> LaMachine(const OptionsDump& options, BoîteDeMessage& messages) {
  const Raccordement raccordement = LitLesPorts(options.ports, options.can);
  const auto drivers = LesDrivers(options.drivers);
  if (options.simulation) return MachineSimulée(messages, Cadence::Libre, drivers);
  return MachineRéelle(messages, raccordement, drivers);
}

}  // namespace

int Dump(const OptionsDump& options) {
  if (!options.sortie.empty()) ExigeUnDossier(options.sortie);
  const Interruption interruption;
  const auto recueil = Crée<Recueil>();
  const auto machine = LaMachine(options, *recueil);
  sim::FichiersEnMémoire mémoire;
  linux_::FichiersLinux disque(".");
  bool complet = false;
  {
    ChassisEnMarche marche(options.fichier, options.chassis, *machine, recueil,
                           LitLesParamètres(options.fichier, options.paramètres),
                           SelonLOption(options.malgréTout));
    complet = Passe(marche, *machine, options.secondes);
    if (complet && options.sortie.empty()) {
      Vide(marche.LeChassis(), machine->Services(), mémoire, {});
    } else if (complet) {
      Vide(marche.LeChassis(), machine->Services(), disque, options.sortie);
    }
  }
  machine->Rapporte(*recueil);
  if (!complet) std::fprintf(stderr, "zuma: ended before the dump: nothing is written\n");
  // The outputs are at rest by now: a reader that is slow holds up no machine.
  if (complet && options.sortie.empty() && !Imprime(options, mémoire.blocs)) {
    std::fprintf(stderr, "zuma: the dump is incomplete: the output did not take all lines\n");
    complet = false;
  }
  for (const Problème& problème : recueil->Problèmes()) {
    std::fprintf(stderr, "%s\n", Ligne(problème).c_str());
  }
  return complet && recueil->Problèmes().empty() ? kBon : kProblèmes;
}

}  // namespace zuma::host
