#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/chassis.h"
#include "outils/recordset_fixe.h"
#include "outils/temoins.h"
#include "platform/liaison_serie.h"
#include "sensors/capteur.h"

// A bench for sensors: rows, parameters, translator, safety, serial line and channel of a test.
namespace zuma::essai {

/// Row of a sensor from a channel: two points (0 to 100 units over 0 to 1000 points), limits of
/// -10 to 110 units and -500 to 2000 points, a stop when they are passed. `colonnes` replace or
/// add to it.
inline Ligne LigneDeCapteur(const Ligne& colonnes = {}) {
  Ligne ligne{{"Type de Capteur", "Normal"},
              {"Nom du Capteur", "Force"},
              {"Nom affiché", "Force fine"},
              {"Seuil de Lecture Non Valide", 0.0},
              {"Remise à Zéro Autorisée", true},
              {"Arrêt en Cas de Dépassement des sécurités", true},
              {"Nombre de Lecture pour une Mise à Valeur", 3},
              {"Temps d'Intégration du Canal", 0.0},
              {"Nombre de Lecture Simultanée", 4},
              {"Sécurité Minimale en Unité", -10.0},
              {"Sécurité Maximale en Unité", "110,0"},
              {"Sécurité Minimale en Points", -500.0},
              {"Sécurité Maximale en Points", 2000.0},
              {"Unité d'Etalonnage", "kN"},
              {"Date d'Etalonnage", "12/03/2024"},
              {"Nom de l'Etalonneur", "Durand"},
              {"Temps de Calcul de la Vitesse", 0.5},
              {"Texte pour le maximum", "Rupture"},
              {"Détection du maxi", false},
              {"Recouvrement - Seuil bas %", 80.0},
              {"Recouvrement - Seuil haut %", 90.0},
              {"Recouvrement - Mini valeur pour recouvrement", 3}};
  for (int i = 1; i <= 20; ++i) {
    const std::string point = "Point " + std::to_string(i);
    ligne.push_back({point + " - Unité", i == 2 ? 100.0 : 0.0});
    ligne.push_back({point + " - Point", i == 2 ? 1000.0 : 0.0});
  }
  return Avec(std::move(ligne), colonnes);
}

/// Parameter that tells every listener at once, from inside the write.
class Parametre : public ZED_Parametre {
 public:
  Parametre(std::string nom, std::string valeur)
      : nom_(std::move(nom)), valeur_(std::move(valeur)) {}
  [[nodiscard]] std::string Key() const override { return nom_; }
  [[nodiscard]] std::string NomParamètre() const override { return nom_; }
  [[nodiscard]] std::string ValeurParamètre() const override { return valeur_; }
  [[nodiscard]] std::string_view LitValeur(std::string&) const override { return valeur_; }
  void ValeurParamètre(std::string valeur) override {
    valeur_ = std::move(valeur);
    ++écritures;
    const auto copie = abonnés;
    for (const auto& [numéro, abonné] : copie) abonné();
  }
  int Abonne(Abonné abonné) override {
    abonnés.emplace(++dernier_, std::move(abonné));
    return dernier_;
  }
  void Désabonne(int numéro) noexcept override { abonnés.erase(numéro); }

  int écritures = 0;
  std::map<int, Abonné> abonnés;

 private:
  std::string nom_;
  std::string valeur_;
  int dernier_ = 0;
};

/// Translator with one word list; what is not in it gives the key.
class Traducteur : public ZED_Traduction {
 public:
  [[nodiscard]] std::string LangueCourante() const override { return langue; }
  void LangueCourante(std::string nouvelle) override {
    langue = std::move(nouvelle);
    ++écrituresDeLangue;
  }
  [[nodiscard]] std::vector<std::string> Langues() const override {
    return {"Français", "English"};
  }
  [[nodiscard]] std::string Traduit(std::string_view clé, std::string_view,
                                    std::string_view) const override {
    const auto mot = mots.find(std::string(clé));
    return mot == mots.end() ? std::string(clé) : mot->second;
  }
  std::string langue = "Français";
  std::map<std::string, std::string> mots;
  int écrituresDeLangue = 0;
};

/// Safety object that keeps what it was told, and may do something when fired.
class Sécurité : public ZED_Securite {
 public:
  void PositionneCauseAU(std::string_view cause) override {
    if (refuse) throw Echec(Numéro::ErreurInterne);
    causes.emplace_back(cause);
  }
  Valeur DéclencheSécurité() override {
    ++arrêts;
    if (réaction) réaction();
    return {};
  }
  std::vector<std::string> causes;
  int arrêts = 0;
  bool refuse = false;
  std::function<void()> réaction;
};

/// Serial line fed by the test; `trace` keeps what is done to it.
class Ligne232 : public ZED_LiaisonSerie {
 public:
  void PortSérie(std::int32_t n) override { Note("p", n); }
  void VitesseSérie(std::int32_t n) override { Note("v", n); }
  [[nodiscard]] std::int32_t VitesseSérie() const override { return 0; }
  void ParitéSérie(std::int32_t n) override { Note("a", n); }
  void BitsDeDonnées(std::int32_t n) override { Note("d", n); }
  void BitsDeStop(std::int32_t n) override { Note("s", n); }
  [[nodiscard]] std::int32_t EtatPort() const override { return ouverte ? 1 : 0; }
  void OuvrePort() override {
    trace += "[ouvre]";
    if (absente) throw Echec(Numéro::MatérielAbsent);
    ouverte = true;
  }
  void FermePort() noexcept override {
    trace += "[ferme]";
    ouverte = false;
  }
  [[nodiscard]] Octets LitTampon(std::optional<std::int32_t>) override {
    if (!ouverte) throw Echec(Numéro::MatérielAbsent);
    return std::exchange(reçu, {});
  }
  void EcritPort(std::string_view octets) override { trace += octets; }
  [[nodiscard]] std::int32_t OctetsReçus() const override { return 0; }
  void Note(const char* quoi, std::int32_t n) { trace += quoi + std::to_string(n) + " "; }

  std::string trace;
  Octets reçu;
  bool absente = false;
  bool ouverte = false;
};

class Lignes232 : public FabriqueLiaisons {
 public:
  [[nodiscard]] Ref<ZED_LiaisonSerie> CréeLiaison() override { return ligne; }
  [[nodiscard]] Ref<PortInstrument> CréePort() override { return {}; }
  Ref<Ligne232> ligne = Crée<Ligne232>();
};

/// The bench: one channel, and sensors that read rows and hang on it or on each other.
class BancCapteur : public Banc {
 public:
  BancCapteur() { plateforme.liaisons = &lignes; }

  /// A sensor of the standard row with these columns, on the channel of the bench and with children
  /// "1", "2", ..., linked and started.
  Ref<Capteur> Monté(const Ligne& colonnes = {}, const std::vector<Ref<Capteur>>& fils = {}) {
    const auto capteur = Lu(LigneDeCapteur(colonnes));
    capteur->Canal(canal);
    capteur->CapteursFils(Crée<Capteurs>(plateforme));
    for (const auto& f : fils) {
      capteur->CapteursFils()->Référence(f, std::to_string(capteur->CapteursFils()->Count() + 1));
    }
    capteur->Lien(sécurité, paramètres, traducteur, nullptr);
    capteur->Initialise();
    return capteur;
  }
  Ref<Capteur> Monté(const char* type, const std::vector<Ref<Capteur>>& fils) {
    return Monté({{"Type de Capteur", type}}, fils);
  }
  /// A sensor whose value the test writes, with limits of 0 to `maxi`.
  Ref<Capteur> Libre(double valeur = 0, double maxi = 0) {
    const auto capteur = Nu();
    capteur->TypeDeCapteur(ENUM_TYPE_CAPTEUR::CapteurLvdtSolartron);
    capteur->ValeurCourante(valeur);
    capteur->MaxiCapteurUnité(maxi);
    return capteur;
  }
  Ref<Capteur> Lu(const Ligne& ligne) {
    const auto capteur = Nu();
    capteur->ParamètresDepuisBD(UneLigne(ligne), 200);
    return capteur;
  }
  /// One refresh `secondes` after the last one, with `points` on the channel.
  void Passe(Capteur& capteur, double points, double secondes = 0.005) {
    timer->heure += secondes * 1e6;
    canal->ValeurCanal(points);
    capteur.MetàJour();
  }
  /// Shared parameter of that index.
  Ref<Parametre> Partage(int index, const std::string& valeur) {
    auto parametre = Crée<Parametre>(std::to_string(index), valeur);
    paramètres->push_back(parametre);
    return parametre;
  }

  Lignes232 lignes;
  Ref<Sécurité> sécurité = Crée<Sécurité>();
  Ref<Traducteur> traducteur = Crée<Traducteur>();
  ParamètresRef paramètres = Crée<ParamètresPartagés>();
  CanalRef canal = Crée<Canal>(plateforme);

 private:
  Ref<Capteur> Nu() {
    const auto capteur = Crée<Capteur>(plateforme);
    capteur->ChargeErreur(registre);
    capteur->TimerExact(timer);
    return capteur;
  }
};

}  // namespace zuma::essai
