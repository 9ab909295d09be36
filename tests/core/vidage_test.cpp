// The diagnostic dump byte for byte, and the trace of a sensor.
#include "base/vidage.h"

#include <algorithm>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "outils/banc_logique.h"
#include "outils/cas.h"
#include "outils/dossier_provisoire.h"
#include "outils/numero.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/demo.h"
#include "platform/linux/fichiers_linux.h"

namespace zuma {
namespace {

using essai::Cas;
using essai::Ligne;
using essai::Lit;
using essai::NuméroDe;

class LeVidage : public testing::Test, public essai::BancLogique {
 protected:
  LeVidage() {
    plateforme.fichiers = &fichiers;
    presse.ChargeErreur(registre);
    presse.TimerExact(timer);
  }
  /// Whole content of the dump, compared with a text beside this file.
  std::string EstCommeDans(const char* modèle) const {
    const std::string obtenu = Lit(fichier);
    const std::string attendu = Lit(std::string(ZUMA_TESTS "/core/") + modèle);
    const auto place = std::ranges::mismatch(obtenu, attendu).in1;
    EXPECT_TRUE(obtenu == attendu) << "line " << std::count(obtenu.begin(), place, '\n') + 1;
    return obtenu;
  }
  /// The demo frame, its boards not started: each channel gets a value that its number tells, and
  /// the objects that show it are refreshed once. No clock but the test's own.
  void MonteLaDémonstration() {
    linux_::CréeBase(dossier.Fichier("demo.db"), linux_::LignesDeDémonstration());
    const auto base = Crée<linux_::BaseSqlite>(dossier.Fichier("demo.db"));
    for (const auto& [index, valeur] : linux_::ParamètresDeDémonstration()) Partage(index, valeur);
    presse.ChargeLeChassis(base, linux_::kChassisDeDémonstration);
    presse.Lien(base, "1", sécurité, paramètres, traducteur);
    for (const CarteRef& carte : *presse.Cartes()) {
      for (const FonctionRef& bloc : *carte->Fonctions()) {
        const bool logique = bloc->TypeDeFonction() <= ENUM_TYPE_FONCTION::FctSortiesLogiques;
        for (const CanalRef& c : *bloc->Canals()) {
          const int n = c->NuméroCanal();
          c->ValeurCanal(logique ? -(n % 2) : 1000.5 * (n + 1));
        }
      }
    }
    timer->heure = 1e6;
    Démarre(*presse.Capteurs());
    // A copying command would write to its board, which is not started.
    for (const auto& c : *presse.Commandes()) {
      c->Initialise();
      if (c->TypeCommande() != ENUM_TYPE_COMMANDE::Recopie) c->MetàJour();
    }
    Démarre(*presse.EntréesLogiques());
    Démarre(*presse.SortiesLogiques());
    EXPECT_EQ(registre->entrées.size(), 0U);
  }
  template <class C>
  void Démarre(const C& objets) {
    for (const auto& objet : objets) objet->Initialise();
    timer->heure += 0.5e6;
    for (const auto& objet : objets) objet->MetàJour();
  }

  essai::DossierProvisoire dossier;
  const std::string fichier = dossier.Fichier("vidage.txt");
  linux_::FichiersLinux fichiers{dossier.Chemin()};
  Chassis presse{plateforme};
};

TEST_F(LeVidage, MontreLaDémonstrationEtSAjoute) {
  MonteLaDémonstration();
  presse.AutoSave(fichier);
  const std::string premier = EstCommeDans("vidage_demo.txt");
  presse.AutoSave(fichier);
  EXPECT_TRUE(Lit(fichier) == premier + premier);
}

TEST_F(LeVidage, RendSesEchecsALAppelant) {
  for (const auto& [chemin, numéro] : Cas<std::string, int>{
           {dossier.Fichier("absent/v.txt"), 76}, {"/dev/full", 75}, {dossier.Fichier(""), 75}}) {
    EXPECT_EQ(NuméroDe([&] { presse.AutoSave(chemin); }), numéro) << chemin;
  }
  EXPECT_FALSE(std::filesystem::exists(dossier.Fichier("absent")));
  plateforme.fichiers = nullptr;
  EXPECT_EQ(NuméroDe([&] { presse.AutoSave(dossier.Fichier("v.txt")); }), 91);
  EXPECT_EQ(registre->entrées.size(), 0U) << "the dump has no error tail";
}

// What the demo frame does not have: rates, a kind of sensor without lines of its own, each state
// of a sensor, objects without what they hang on.
TEST_F(LeVidage, MontreChaqueEtatSansRienInventer) {
  presse.FréquenceEA(100);
  presse.FréquenceSA(1.5);
  presse.FréquenceEL(50);
  presse.FréquenceSL(2);
  timer->heure = 2e6;
  presse.MetàJour();
  presse.AutoSave(fichier);

  const auto capteur = Monté(Ligne{}, {Monté()});
  capteur->TypeDeCapteur(ENUM_TYPE_CAPTEUR::CapteurScout55);
  capteur->AutoSave(fichier);
  capteur->TypeDeCapteur(ENUM_TYPE_CAPTEUR::capteurNormal);
  Passe(*capteur, 1500);
  capteur->AutoSave(fichier);
  capteur->InterditAU();
  capteur->Raz();
  capteur->Enabled_bln(false);  // it reads 0: the dump shows what it has
  Passe(*capteur, 1500);
  capteur->AutoSave(fichier);
  const auto faible = Monté({{"Seuil de Lecture Non Valide", 2.5}});
  Passe(*faible, 10);
  faible->AutoSave(fichier);

  const auto entrée = Crée<EntréeLogique>(plateforme);
  for (const auto état : {ENUM_ETAT_LOGIQUE::Inconnu, ENUM_ETAT_LOGIQUE::Actif}) {
    entrée->ValeurCourante(état);  // which the dump must leave to its host
    entrée->AutoSave(fichier);
  }
  const auto carte = Crée<Carte>(plateforme);
  carte->NomDeLaCarte("Lointaine");
  carte->Adresse(-2);
  carte->AutoSave(fichier);
  const auto seul = Crée<zuma::Canal>(plateforme);
  seul->Driver(ENUM_DRIVER::DrvModBus);
  seul->AutoSave(fichier);
  const auto watchdog = Lu<Watchdog>({{"Index", 3},
                                      {"Nom du Watchdog", "WDT"},
                                      {"Adresse", "2F0"},
                                      {"Temps en seconde", 0.5},
                                      {"Pulse", 17}});
  watchdog->AutoSave(fichier);
  watchdog->Adresse(0);  // no board to stop at its end
  EstCommeDans("vidage_objets.txt");
}

TEST_F(LeVidage, EspionneUnCapteurSurLeFichierDeLHôte) {
  const int fd = ::open(fichier.c_str(), O_WRONLY | O_CREAT, 0600);
  ASSERT_GE(fd, 0);
  const auto numéro = static_cast<std::int16_t>(fd);
  const auto capteur = Monté();
  capteur->Key("4");
  capteur->Canal(CanalDe(12));
  capteur->Espion(numéro);
  EXPECT_EQ(registre->entrées.size(), 0U);
  capteur->Canal({});
  capteur->Espion(numéro);
  const std::string début =
      "\n********************* Capteur *********************\n"
      "Nom du capteur                : Force\n"
      "Index du capteur              : 4\n";
  EXPECT_EQ(Lit(fichier), début + "Nom du canal                  : c\n" + début);
  EXPECT_EQ(registre->entrées.at(0).variables.back(), (std::array<Valeur, 2>{})) << "no channel";
  EXPECT_TRUE(Dit("Erreur N°91 (Objet absent)"));

  EXPECT_EQ(::close(fd), 0) << "the file stays open";
  capteur->Canal(CanalDe(12));
  capteur->Espion(numéro);
  EXPECT_EQ(registre->entrées.at(0).variables,
            (TableVariables{{},
                            {"Variable intNumFich", std::int32_t{numéro}},
                            {"Variable mstrNom", "Force"},
                            {"Variable Key", "4"},
                            {"Variable mobjCanal.Nom", "c"}}));
  EXPECT_TRUE(Dit("Erreur N°52 (Fichier n° ")) << "on a closed file";
}

}  // namespace
}  // namespace zuma
