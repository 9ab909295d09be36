// A frame that others look at: they see what it holds, hold nothing up, and are told what they
// missed.
#include <csignal>
#include <fstream>
#include <set>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "outils/allocations.h"
#include "outils/cas.h"
#include "outils/chassis_publie.h"
#include "publication/lecture/lecteur.h"
#include "sensors/lecture.h"

namespace zuma {
namespace {

using publication::Cherche;
using publication::Echantillon;
using publication::EvènementLu;
using publication::GenreDEvènement;
using publication::Illisible;
using publication::Lecteur;
using publication::Lu;
using publication::Place;

std::size_t RangDe(const Lecteur& lecteur, std::string_view nom) {
  const auto rangs = Cherche(lecteur.LeChassis(), nom);
  EXPECT_EQ(rangs.size(), 1U) << nom;
  return rangs.empty() ? 0 : rangs.front();
}

class UnePublication : public testing::Test, protected essai::ChassisPubliéDeDémo {
 protected:
  std::vector<EvènementLu> Evènements(const Lecteur& lecteur) const {
    std::vector<EvènementLu> tous;
    EvènementLu évènement;
    for (auto n = lecteur.PremierEvènement(); lecteur.Lit(n, évènement) == Lu::Bon; ++n) {
      tous.push_back(évènement);
    }
    return tous;
  }
};

TEST_F(UnePublication, MontreADAutresCeQueLeChassisTient) {
  const std::uint64_t refraîchies = marche->LeChassis().RafraichissementsEA();
  while (marche->LeChassis().RafraichissementsEA() < refraîchies + 100) Passe(0.001);
  const auto avant = essai::Allocations();
  marche->LaPublication().Publie();
  EXPECT_EQ(essai::Allocations(), avant);

  const Lecteur lecteur(Fichier());
  EXPECT_EQ(lecteur.Processus(), ::getpid());
  const publication::ChassisPublié& chassis = lecteur.LeChassis();
  EXPECT_EQ(chassis.index, 1);
  EXPECT_TRUE(chassis.simulé);
  Echantillon dernier;
  ASSERT_TRUE(lecteur.LitLeDernier(dernier));
  std::size_t rang = 0;
  for (const CapteurRef& capteur : *marche->LeChassis().Capteurs()) {
    SCOPED_TRACE(capteur->NomDuCapteur());
    const publication::Mesure mesure = dernier[rang];
    EXPECT_EQ(chassis.objets[rang].nom, capteur->NomDuCapteur());
    EXPECT_EQ(chassis.objets[rang].unité, capteur->UnitéEtalonnage());
    EXPECT_EQ(std::isnan(mesure.valeur), !LectureDe(*capteur));
    if (LectureDe(*capteur)) {
      EXPECT_EQ(mesure.valeur, *LectureDe(*capteur));
    }
    EXPECT_FLOAT_EQ(static_cast<float>(mesure.âge), static_cast<float>(capteur->Age()));
    EXPECT_EQ(mesure.Est(publication::kVieux), capteur->EstVieux());
    EXPECT_EQ(mesure.EtatDuCapteur(), static_cast<std::uint32_t>(capteur->Etat()));
    ++rang;
  }
  EXPECT_EQ(rang, static_cast<std::size_t>(marche->LeChassis().Capteurs()->Count()));
  const Canal& canal = *(*marche->LeChassis().Capteurs()->begin())->Canal();
  const std::size_t sien = RangDe(lecteur, chassis.objets[0].canal);
  EXPECT_EQ(dernier[sien].valeur, canal.ValeurCanal());
  EXPECT_EQ(chassis.objets[sien].genre, publication::Genre::Canal);
}

TEST_F(UnePublication, DitUnArrêtSesSortiesEtCeQuOnFaitEnsuite) {
  Passe(0.3);
  const Lecteur lecteur(Fichier());
  const CommandesRef commandes = marche->LeChassis().Commandes();
  Commande& valve = **std::ranges::find(*commandes, "Servovalve", [](const CommandeRef& commande) {
    return std::string_view(commande->Label());
  });
  valve.Enabled(true);
  valve.ValeurCouranteEnUnité(valve.MaxiCommande() / 2);
  Passe(0.2);
  const std::uint64_t premier = lecteur.EvènementSuivant();
  marche->Arrête("porte ouverte");
  Passe(0.2);
  ASSERT_TRUE(marche->Acquitte());
  marche->Arrête("encore");  // before any pass has seen the acknowledgement
  Passe(0.01);
  marche->Acquitte();
  marche->RemetEnService();
  recueil->AjouteErreur("panne", {});
  Passe(0.2);

  const auto évènements = Evènements(lecteur);
  const auto nombre = [&](GenreDEvènement genre, std::string_view texte = {}) {
    return std::ranges::count_if(évènements, [&](const EvènementLu& e) {
      return e.numéro >= premier && e.genre == genre && e.texte.find(texte) != std::string::npos;
    });
  };
  EXPECT_EQ(nombre(GenreDEvènement::Arrêt, "porte ouverte"), 1);
  EXPECT_EQ(nombre(GenreDEvènement::Arrêt, "encore"), 1);
  EXPECT_EQ(nombre(GenreDEvènement::Acquitté), 2);
  EXPECT_EQ(nombre(GenreDEvènement::Manquée), 0);
  EXPECT_EQ(nombre(GenreDEvènement::EnService), 1);
  EXPECT_EQ(nombre(GenreDEvènement::Problème, "panne"), 1);
  const auto arrêt = std::ranges::find(évènements, GenreDEvènement::Arrêt, &EvènementLu::genre);
  const std::size_t rang = RangDe(lecteur, "command:Servovalve");
  const auto de = [&](GenreDEvènement genre) {
    return std::ranges::find_if(
        évènements, [&](const EvènementLu& e) { return e.genre == genre && e.objet == rang; });
  };
  ASSERT_NE(de(GenreDEvènement::Consigne), évènements.end());
  EXPECT_EQ(de(GenreDEvènement::Consigne)->valeur, valve.MaxiCommande() / 2);
  ASSERT_NE(de(GenreDEvènement::Atteinte), évènements.end());
  EXPECT_EQ(de(GenreDEvènement::Atteinte)->passe, arrêt->passe) << "a port takes it at once";
  Echantillon échantillon;
  bool vu = false;
  for (auto n = lecteur.Premier(); lecteur.Lit(n, échantillon) == Lu::Bon; ++n) {
    vu = vu || (échantillon.Passe() == arrêt->passe && échantillon.Arrêt());
  }
  EXPECT_TRUE(vu) << "a sample goes with each event";
}

TEST_F(UnePublication, DitQuUnEtalonnageAChangé) {
  Lecteur lecteur(Fichier());
  EXPECT_FALSE(lecteur.Actualise());
  Capteur& capteur = **marche->LeChassis().Capteurs()->begin();
  capteur.UnitéEtalonnage("daN");
  marche->LaPublication().Redécrit();
  EXPECT_TRUE(lecteur.Actualise());
  EXPECT_EQ(lecteur.LeChassis().objets[0].unité, "daN");
}

TEST(LesRéglagesDUnePublication, SeLisentEtSeBornent) {
  for (const auto& [texte, secondes] : essai::Cas<const char*, double>{{"30", 30},
                                                                       {"0.5", 0.5},
                                                                       {"0", 60},
                                                                       {"-1", 60},
                                                                       {"abc", 60},
                                                                       {"10 s", 60},
                                                                       {"nan", 60}}) {
    ::setenv("ZUMA_PUBLICATION_SECONDS", texte, 1);
    EXPECT_EQ(publication::RéglagesDuSystème().secondes, secondes) << texte;
  }
  ::unsetenv("ZUMA_PUBLICATION_SECONDS");
  EXPECT_EQ(publication::RéglagesDuSystème().secondes, 60);
}

TEST_F(UnePublication, DépasseQuiEstTropLentEtLeLuiDit) {
  essai::DossierProvisoire dossier;
  Place place({"autre.db", 1, true}, dossier.Chemin());
  publication::Publication petite(marche->LeChassis(), place, {}, {.secondes = 0});
  const Lecteur lecteur = petite.LeLecteur();
  Echantillon échantillon;
  EXPECT_EQ(lecteur.Lit(0, échantillon), Lu::PasEncore);
  EXPECT_FALSE(lecteur.LitLeDernier(échantillon));
  Passe(2, [&] { petite.Publie(); });
  EXPECT_EQ(lecteur.Lit(0, échantillon), Lu::Dépassé);
  EXPECT_EQ(lecteur.Lit(lecteur.Premier(), échantillon), Lu::Bon);
  EXPECT_EQ(lecteur.Suivant() - lecteur.Premier(), lecteur.Places());
  const double milieu = échantillon.Secondes() + 0.1;
  ASSERT_EQ(lecteur.Lit(lecteur.PremierDepuis(milieu), échantillon), Lu::Bon);
  EXPECT_GE(échantillon.Secondes(), milieu);
  ASSERT_EQ(lecteur.Lit(échantillon.Numéro() - 1, échantillon), Lu::Bon);
  EXPECT_LT(échantillon.Secondes(), milieu);
}

// Whatever chatters, a stop stays in its ring for the seconds that were asked for, and each value
// is told in the end.
TEST_F(UnePublication, GardeUnArrêtQuoiQuiBavarde) {
  essai::DossierProvisoire dossier;
  Place place({"bavarde.db", 1, true}, dossier.Chemin());
  publication::Publication petite(marche->LeChassis(), place, {}, {.secondes = 4});
  petite.Note(GenreDEvènement::Arrêt, "avant le bruit");
  const auto sorties = marche->LeChassis().SortiesLogiques();
  auto niveau = ENUM_ETAT_LOGIQUE::Actif;
  Passe(3.9, [&] {
    niveau =
        niveau == ENUM_ETAT_LOGIQUE::Actif ? ENUM_ETAT_LOGIQUE::Inactif : ENUM_ETAT_LOGIQUE::Actif;
    for (const auto& sortie : *sorties) sortie->ValeurCourante(niveau);
    for (const auto& commande : *marche->LeChassis().Commandes()) {
      commande->ValeurCouranteEnUnité(niveau == ENUM_ETAT_LOGIQUE::Actif ? 1 : 2);
    }
    petite.Publie();
  });
  const Lecteur lecteur = petite.LeLecteur();
  const auto évènements = Evènements(lecteur);
  EXPECT_EQ(std::ranges::count(évènements, "avant le bruit", &EvènementLu::texte), 1);
  std::set<std::optional<std::size_t>> dits;
  for (const EvènementLu& e : évènements) dits.insert(e.objet);
  EXPECT_GT(évènements.size(), 100U);
  EXPECT_LT(évènements.size(), 300U) << "fifty a second";
  EXPECT_GT(dits.size(), static_cast<std::size_t>(sorties->Count())) << "each in its turn";
  Echantillon premier;
  ASSERT_EQ(lecteur.Lit(lecteur.Premier(), premier), Lu::Bon);
  EXPECT_LT(premier.Secondes(), secondes - 3.8);
}

// Words of another turn in one place would show here.
TEST(LesPlacesDUnAnneau, NeSontJamaisLuesAMoitié) {
  constexpr std::size_t kMots = 64;
  constexpr std::uint64_t kTours = 100'000;
  std::vector<publication::Mot> place(kMots);
  std::thread écrivain([&] {
    for (std::uint64_t n = 0; n < kTours; ++n) {
      publication::EnEcriture écriture(place, n);
      for (std::size_t i = 1; i < kMots; ++i) écriture.Ecrit(i, n * kMots + i);
    }
  });
  std::vector<std::uint64_t> copie(kMots);
  std::uint64_t lus = 0;
  for (std::uint64_t n = 0; n + 1 < kTours;) {
    n = place[0].load(std::memory_order_relaxed) / 2;
    n = n == 0 ? 0 : n - 1;
    if (!publication::LitLaPlace(place, n, copie)) continue;
    ++lus;
    for (std::size_t i = 1; i < kMots; ++i) ASSERT_EQ(copie[i], n * kMots + i);
  }
  écrivain.join();
  EXPECT_GT(lus, 0U);
}

class UnePlace : public testing::Test {
 protected:
  essai::DossierProvisoire dossier;
  publication::Identité identité{dossier.Fichier("cadre.db"), 7, false};
  std::string fichier = dossier.Fichier(publication::NomDeFichier(identité));
};

TEST_F(UnePlace, NEstQuAUnSeul) {
  {
    Place place(identité, dossier.Chemin());
    (void)place.Réserve(std::size_t{1} << 16U);
    EXPECT_TRUE(publication::EstVivante(fichier));
    struct stat état{};
    ASSERT_EQ(::stat(fichier.c_str(), &état), 0);
    EXPECT_EQ(état.st_mode & 0777U, 0640U);
    // Nor from another folder, or one that cannot be written: another user's host.
    for (const std::string& où : {dossier.Chemin().string(), dossier.Fichier("absent")}) {
      try {
        const Place autre(identité, où);
        FAIL() << "two hosts of one frame";
      } catch (const publication::DéjàEnMarche& refus) {
        EXPECT_EQ(refus.pid, ::getpid());
        EXPECT_NE(std::string(refus.what()).find("is run by process"), std::string::npos);
      }
    }
    // A simulated host moves no machine, nor does a recording.
    const Place simulée({identité.fichier, identité.index, true}, dossier.Chemin());
    const Place rejouée({identité.fichier, identité.index, true, true}, dossier.Chemin());
    EXPECT_EQ(publication::Publications(dossier.Chemin()).size(), 3U);
  }
  EXPECT_FALSE(std::filesystem::exists(fichier));
}

TEST_F(UnePlace, DUnMortEstLueEtReprise) {
  const pid_t enfant = ::fork();
  if (enfant == 0) {
    essai::ChassisPubliéDeDémo démo;
    démo.Passe(0.2);
    démo.marche->Arrête("au secours");
    démo.Passe(0.01);
    std::filesystem::copy_file(démo.Fichier(), fichier);
    std::raise(SIGKILL);
  }
  int état = 0;
  ASSERT_EQ(::waitpid(enfant, &état, 0), enfant);
  ASSERT_TRUE(WIFSIGNALED(état));
  EXPECT_FALSE(publication::EstVivante(fichier));
  const Lecteur avant(fichier);
  const Place place(identité, dossier.Chemin());
  EXPECT_EQ(place.Défaut(), "");
  EXPECT_EQ(place.MiseDeCôté(), fichier + ".before");
  EXPECT_TRUE(publication::EstVivante(fichier)) << "the name is the new host's";
  EXPECT_FALSE(avant.EstEnMarche()) << "the map in hand is still the dead one's";
  const Lecteur lecteur(fichier + ".before");
  EXPECT_FALSE(lecteur.EstFini());
  Echantillon dernier;
  ASSERT_TRUE(lecteur.LitLeDernier(dernier));
  EXPECT_TRUE(dernier.Arrêt());
}

TEST_F(UnePlace, QuOnNePeutPrendreNEmpêchePasLaMachine) {
  Place place(identité, dossier.Fichier("absent"));
  EXPECT_NE(place.Défaut().find("nobody can look"), std::string::npos);
  EXPECT_EQ(place.Fichier(), "");
  const auto zone = place.Réserve(4096);
  zone->Mots()[1] = 1;
}

TEST(UneCarteAbîmée, EstRefuséeEtNonLue) {
  essai::ChassisPubliéDeDémo démo;
  Place place({"petite.db", 1, true}, démo.base.dossier.Chemin());
  publication::Publication petite(démo.marche->LeChassis(), place, {}, {.secondes = 0});
  démo.Passe(0.1, [&] { petite.Publie(); });
  const std::string bonne = essai::Lit(place.Fichier());
  const std::string nom = démo.base.dossier.Fichier("abimee.pub");
  const auto essaie = [&](const std::string& octets) {
    std::ofstream(nom, std::ios::binary) << octets;
    try {
      const Lecteur lecteur(nom);
      Echantillon échantillon;
      EvènementLu évènement;
      (void)lecteur.LitLeDernier(échantillon);
      (void)lecteur.Lit(lecteur.PremierEvènement(), évènement);
      return std::string();
    } catch (const Illisible& refus) {
      return std::string(refus.what());
    }
  };
  EXPECT_EQ(essaie(bonne), "");
  for (const std::size_t taille : {std::size_t{0}, std::size_t{100}, bonne.size() / 2}) {
    EXPECT_NE(essaie(bonne.substr(0, taille)), "") << taille;
  }
  for (std::size_t champ = 0; champ < publication::RangDe(publication::EnTête::kNombre); ++champ) {
    for (const char octet : {'\0', '\1', '\x7F', '\xFF'}) {
      std::string mauvaise = bonne;
      mauvaise.replace(champ * 8, 8, std::string(8, octet));
      (void)essaie(mauvaise);  // whatever it says, it does not read beyond
    }
  }
  EXPECT_NE(essaie("pas une carte" + std::string(8192, ' ')).find("is no publication"),
            std::string::npos);
}

TEST(LesNomsDUnePublication, SeTrouventCommeOnLesDit) {
  publication::ChassisPublié chassis;
  using publication::Genre;
  for (const auto& [genre, label, nom] :
       essai::Cas<Genre, std::string, std::string>{{Genre::Capteur, "Force", "Force 100 kN"},
                                                   {Genre::Capteur, "Course", "Force"},
                                                   {Genre::Commande, "Valve", "Servo"},
                                                   {Genre::Entrée, "Valve", "Porte"}}) {
    publication::ObjetPublié objet;
    objet.genre = genre;
    objet.label = label;
    objet.nom = nom;
    chassis.objets.push_back(objet);
  }
  using Rangs = std::vector<std::size_t>;
  for (const auto& [nom, rangs] : essai::Cas<std::string, Rangs>{{"force", {0}},
                                                                 {"Force 100 kN", {0}},
                                                                 {"valve", {2, 3}},
                                                                 {"input:valve", {3}},
                                                                 {"sensor:valve", {}},
                                                                 {"rien", {}}}) {
    EXPECT_EQ(Cherche(chassis, nom), rangs) << nom;
  }
  EXPECT_EQ(LesPlusProches(chassis, "Fource").front(), "Force");
  EXPECT_TRUE(LesPlusProches(chassis, "déformation transversale").empty());
}

}  // namespace
}  // namespace zuma
