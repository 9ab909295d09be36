#include "host/machine_rejouee.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>
#include <thread>

#include "host/configuration.h"
#include "host/enregistrement_lu.h"
#include "host/rangees_publiees.h"
#include "publication/description.h"

namespace zuma::host {
namespace {

constexpr double kMicrosecondes = 1e6;

[[nodiscard]] bool EstUneEntrée(const Canal& canal) {
  return canal.TypeCanal() == ENUM_TYPE_FONCTION::FctEntréesAnalogiques ||
         canal.TypeCanal() == ENUM_TYPE_FONCTION::FctEntréesLogiques;
}

auto ColonneDeLHorloge(const EnregistrementLu& lu) {
  return std::ranges::find(lu.colonnes, kColonneDeLHorloge, &ColonneLue::nom);
}

EnregistrementLu LitCeQuiSeRejoue(const std::string& fichier) {
  EnregistrementLu lu = LitLEnregistrement(fichier);
  if (ColonneDeLHorloge(lu) == lu.colonnes.end() || !lu.liéÀ) {
    throw MauvaisUsage(fichier +
                       " cannot be played again: it holds no clock and no channels, or its .json "
                       "file is missing; record with: run FILE --csv NAME --channels");
  }
  if (lu.secondes.empty()) throw MauvaisUsage(fichier + " has no rows to play again");
  return lu;
}

class Rejouée final : public Machine {
 public:
  Rejouée(std::unique_ptr<Machine> dessous, const std::string& fichier, Cadence cadence)
      : dessous_(std::move(dessous)),
        fichier_(fichier),
        lu_(LitCeQuiSeRejoue(fichier)),
        cadence_(cadence) {}

  Plateforme& Services() override { return dessous_->Services(); }
  Ref<ZED_Timer> Timer() override { return dessous_->Timer(); }
  void Branche(Chassis& chassis) override {
    dessous_->Branche(chassis);
    instant_ = horloge_[0] - lu_.secondes[0] * kMicrosecondes;
  }
  double InstantDePasse() override { return instant_; }
  bool AuBout() const override { return rangée_ == lu_.secondes.size(); }
  std::string_view Fini() const override { return dessous_->Fini(); }
  void AvantLaFin(const std::function<void()>& acte) override { dessous_->AvantLaFin(acte); }
  void Rapporte(ZED_Erreur& erreurs) const override { dessous_->Rapporte(erreurs); }

  void AprèsLeDépart(Chassis& chassis) override {
    chassis_ = &chassis;
    départ_ = Instant::now();
    RepèreLesCanaux();
    RepèreLesActes();
    TaitLesInstruments();
    // Their channels stay: the sensors hold them. Nothing reads over the points of a row.
    cartes_ = chassis.Cartes();
    chassis.Cartes(Crée<zuma::Cartes>(chassis.LaPlateforme()));
    for (const Lacune& lacune : lu_.lacunes) {
      std::fprintf(stderr, "zuma: %s lacks %llu rows from %.6f s to %.6f s: filters settle anew\n",
                   fichier_.c_str(), static_cast<unsigned long long>(lacune.rangées), lacune.de,
                   lacune.à);
    }
  }

  double AvanceJusquA(double secondes) override {
    if (chassis_ == nullptr || AuBout()) return dessous_->AvanceJusquA(secondes);
    const double heure = lu_.secondes[rangée_];
    if (cadence_ == Cadence::Réelle) {
      std::this_thread::sleep_until(départ_ +
                                    std::chrono::duration_cast<Instant::duration>(
                                        std::chrono::duration<double>(heure - lu_.secondes[0])));
    }
    (void)dessous_->AvanceJusquA(heure);  // filters of inputs and waits count by its clock
    FaitLesActes();
    instant_ = horloge_[rangée_];
    chassis_->LaPlateforme().heureDePasse = instant_ / kMicrosecondes;
    for (const auto& [canal, colonne] : canaux_) {
      const double points = colonne->valeurs[rangée_];
      if (std::isfinite(points)) canal->ValeurCanal(points);
    }
    chassis_->ExigeUnRafraîchissement();
    ++rangée_;
    return heure;
  }

 private:
  using Instant = std::chrono::steady_clock;

  void RepèreLesCanaux() {
    std::map<std::string, std::vector<CanalRef>> canaux;
    for (const CanalRef& canal : publication::ObjetsDuChassis(*chassis_).canaux) {
      canaux[publication::NomDuCanal(canal)].push_back(canal);
    }
    for (auto colonne = ColonneDeLHorloge(lu_) + 1; colonne != lu_.colonnes.end(); ++colonne) {
      const std::vector<CanalRef>& trouvés = canaux[colonne->nom];
      if (trouvés.size() != 1) {
        throw MauvaisUsage("this frame has no channel, or more than one, called " + colonne->nom +
                           ", which " + fichier_ + " was recorded with");
      }
      if (EstUneEntrée(*trouvés.front())) canaux_.emplace_back(trouvés.front(), &*colonne);
    }
  }

  void RepèreLesActes() {
    const auto capteurs = chassis_->Capteurs();
    for (const auto& [rangée, acte] : lu_.actes) {
      const auto capteur = std::ranges::find_if(
          *capteurs, [&](const CapteurRef& c) { return c->NomDuCapteur() == acte.capteur; });
      if (capteur == capteurs->end()) {
        throw MauvaisUsage("this frame has no sensor " + acte.capteur + ", of which " + fichier_ +
                           " tells: " + std::string(MotDe(acte.acte)));
      }
      actes_.push_back({rangée, acte, *capteur});
    }
  }

  void TaitLesInstruments() {
    for (const CapteurRef& capteur : *chassis_->Capteurs()) {
      if (!capteur->EstDUnInstrument() || !capteur->Enabled_bln()) continue;
      capteur->Enabled_bln(false);
      std::fprintf(stderr, "zuma: %s reads an instrument of its own, and is not played again\n",
                   capteur->NomDuCapteur().c_str());
    }
  }

  void FaitLesActes() {
    for (; acte_ < actes_.size() && actes_[acte_].rangée <= rangée_; ++acte_) {
      const auto& [rangée, acte, capteur] = actes_[acte_];
      if (acte.acte == ActeSurCapteur::ZéroRepris) capteur->AnnuleRaz();
      if (acte.acte == ActeSurCapteur::TareReprise) capteur->AnnuleTare();
      if (acte.acte == ActeSurCapteur::Zéro) capteur->Raz();
      if (acte.acte == ActeSurCapteur::Tare) capteur->Tare(Valeur(acte.valeur));
    }
  }

  struct ActeÀFaire {
    std::size_t rangée;
    Acte acte;
    CapteurRef capteur;
  };

  std::unique_ptr<Machine> dessous_;
  std::string fichier_;
  EnregistrementLu lu_;
  const std::vector<double>& horloge_ = ColonneDeLHorloge(lu_)->valeurs;
  Cadence cadence_;
  double instant_ = *lu_.liéÀ;  ///< of the link, of the start, then of the pass to come
  Instant::time_point départ_{};
  Chassis* chassis_ = nullptr;
  CartesRef cartes_;
  std::vector<std::pair<CanalRef, const ColonneLue*>> canaux_;
  std::vector<ActeÀFaire> actes_;
  std::size_t acte_ = 0, rangée_ = 0;  ///< the next ones
};

}  // namespace

std::unique_ptr<Machine> MachineRejouée(std::unique_ptr<Machine> dessous,
                                        const std::string& enregistrement, Cadence cadence) {
  return std::make_unique<Rejouée>(std::move(dessous), enregistrement, cadence);
}

std::vector<std::string> ParamètresEnregistrés(const std::string& enregistrement) {
  constexpr std::string_view kDébut = "specimen parameter ";
  std::vector<std::string> paramètres;
  for (const auto& [nom, valeur] : LitLEnregistrement(enregistrement).textes) {
    if (nom.starts_with(kDébut)) paramètres.push_back(nom.substr(kDébut.size()) + "=" + valeur);
  }
  return paramètres;
}

}  // namespace zuma::host
