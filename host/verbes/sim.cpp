#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <numbers>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/interruption.h"
#include "host/verbes/pseudo_terminal.h"
#include "host/verbes/verbes.h"
#include "sim/balance_gram_simulee.h"
#include "sim/balances_simulees.h"
#include "sim/conditionneur_simule.h"
#include "sim/esclave_modbus.h"
#include "sim/instrument_interroge.h"
#include "sim/laser_simule.h"
#include "sim/metro_simule.h"
#include "sim/testeur_cbr_simule.h"
#include "sim/variateur_simule.h"

namespace zuma::host {
namespace {

constexpr std::int32_t kVitesse = 9600;
constexpr double kPériode = 20;  // seconds of the slow sine that the quantities follow

/// One instrument on its own pseudo-terminal.
struct Servi {
  std::string nom;
  std::string parle;
  Ref<sim::AppareilSérie> appareil;
  std::function<void(double)> anime;  ///< sets its quantity, from -1 to 1 times its range
  PseudoTerminal port{};
  std::unique_ptr<sim::LigneSérie> ligne = std::make_unique<sim::LigneSérie>();
};

/// Slave addresses are those of the demo frames, which thus run on the served instruments.
class Atelier {
 public:
  Atelier() {
    Interroge("balance", "14-character answer to ESC P", sim::kBalance14, 12);
    Interroge("comparator", "10-character answer to byte 2", sim::kComparateur10, 5);
    Interroge("indicator", "MSV? and a number in grams", sim::kIndicateurMSV, 50);
    Pèse<sim::BalanceLRPC31Simulée>("lrpc", "LRPC 31 balance, sends by itself");
    Pèse<sim::IndicateurDEXALSimulé>("dexal", "DEXAL indicator, sends by itself");
    Pèse<sim::BalanceJADEVERSimulée>("jadever", "JADEVER balance, sends by itself");
    Pèse<sim::BalanceGramSimulée>("gram", "Gram balance, sends by itself");
    Presse();
    Jauge("metro", "METRO gauge 1", false);
    Jauge("metro-mux", "METRO gauges 1 and 2 behind a multiplexer", true);
    Laser();
    Registres("modbus", 1);
    Registres("umv", 2);
    Entraîne();
    Conditionne("conditioner", 5);
    Conditionne("conditioner-2", 6);
    for (Servi& servi : servis_) servi.ligne->Attache(servi.appareil);
  }

  [[nodiscard]] const std::vector<Servi>& Servis() const { return servis_; }

  void Sert(double secondes) {
    horloge_->Avance(secondes * 1e6 - horloge_->Maintenant());
    const double place = std::sin(2 * std::numbers::pi * secondes / kPériode);
    for (Servi& servi : servis_) {
      servi.anime(place);
      const Octets reçus = servi.port.Lit();
      if (!reçus.empty()) (void)servi.ligne->Ecrit(reçus, kVitesse);
      const Octets émis = std::exchange(servi.ligne->Reçus(), {});
      if (!émis.empty()) servi.port.Ecrit(émis);
    }
  }

 private:
  void Interroge(const char* nom, const char* parle, const sim::Langage& langage, double échelle) {
    const auto appareil = Crée<sim::InstrumentInterrogé>(*horloge_, langage, 0.0);
    servis_.push_back({nom, parle, appareil, [appareil, échelle](double place) {
                         appareil->valeur = échelle * (1.5 + place);
                       }});
  }
  template <class Balance>
  void Pèse(const char* nom, const char* parle) {
    const auto appareil = Crée<Balance>(*horloge_);
    servis_.push_back(
        {nom, parle, appareil, [appareil](double place) { appareil->poids = 20 + 10 * place; }});
  }
  void Presse() {
    const auto appareil = Crée<sim::TesteurCBRSimulé>(*horloge_);
    servis_.push_back({"cbr", "CBR tester, pushes once it is started", appareil,
                       [appareil](double place) { appareil->précharge = 0.05 * place; }});
  }
  void Jauge(const char* nom, const char* parle, bool multiplexeur) {
    const auto appareil = Crée<sim::METROSimulé>(*horloge_, multiplexeur);
    appareil->refuse = true;  // silence would hold the start of a frame for 6 s a gauge
    servis_.push_back({nom, parle, appareil, [appareil, multiplexeur](double place) {
                         appareil->jauges[1] = place;
                         if (multiplexeur) appareil->jauges[2] = 2 + place;
                       }});
  }
  void Laser() {
    constexpr double kEtendue = 20'000;  // counts
    const auto appareil = Crée<sim::LaserSimulé>(*horloge_);
    servis_.push_back({"laser", "EIR laser extensometer, binary measure", appareil,
                       [appareil](double place) { appareil->extension = kEtendue * place; }});
  }
  void Registres(const char* nom, std::uint8_t adresse) {
    const auto appareil = Crée<sim::EsclaveModbus>(*horloge_, adresse);
    for (std::uint16_t i = 0; i < 16; ++i) {
      appareil->registres[i] = i;
      appareil->bits[i] = i % 2 != 0;
    }
    servis_.push_back({nom, Esclave("registers and inputs 0 to 15, register 0 moves", adresse),
                       appareil, [appareil](double place) {
                         appareil->registres[0] =
                             static_cast<std::uint16_t>(std::lround(1000 * (1 + place)));
                       }});
  }
  // It moves by its set point alone.
  void Entraîne() {
    constexpr std::uint8_t kAdresse = 5;
    servis_.push_back({"drive", Esclave("variable-speed drive", kAdresse),
                       Crée<sim::VariateurSimulé>(*horloge_, kAdresse), [](double) {}});
  }
  void Conditionne(const char* nom, std::uint8_t adresse) {
    const auto appareil = Crée<sim::ConditionneurSimulé>(*horloge_, adresse);
    servis_.push_back({nom, Esclave("K9 digital conditioner, three values", adresse), appareil,
                       [appareil](double place) {
                         appareil->valeurs = {20'000 * place, 5'000 * place, -1'000 * place};
                       }});
  }
  static std::string Esclave(const char* quoi, unsigned adresse) {
    return "Modbus RTU slave " + std::to_string(adresse) + ", " + quoi;
  }

  Ref<sim::HorlogeVirtuelle> horloge_ = Crée<sim::HorlogeVirtuelle>();
  std::vector<Servi> servis_;
};

void Imprime(const Atelier& atelier, bool json) {
  nlohmann::ordered_json liste = nlohmann::ordered_json::array();
  for (const Servi& servi : atelier.Servis()) {
    if (json) {
      liste.push_back({{"name", servi.nom}, {"speaks", servi.parle}, {"port", servi.port.Nom()}});
    } else {
      std::printf("%-14s %-16s %s\n", servi.nom.c_str(), servi.port.Nom().c_str(),
                  servi.parle.c_str());
    }
  }
  if (json) std::printf("%s\n", liste.dump().c_str());
  if (!json) std::printf("Serving; Ctrl-C ends.\n");
  std::fflush(stdout);
}

}  // namespace

int Sim(const OptionsSim& options) {
  const Interruption interruption;
  Atelier atelier;
  Imprime(atelier, options.json);
  const auto départ = std::chrono::steady_clock::now();
  double secondes = 0;
  while (!Interruption::Demandée() && !(options.secondes && secondes >= *options.secondes)) {
    secondes = std::chrono::duration<double>(std::chrono::steady_clock::now() - départ).count();
    atelier.Sert(secondes);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return kBon;
}

}  // namespace zuma::host
