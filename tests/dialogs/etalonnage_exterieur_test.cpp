// Calibration of a sensor and of a command on the machine, from the form to the row and the object.
#include <filesystem>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "dialogs/affichage_court.h"
#include "outils/dossier_provisoire.h"
#include "outils/fenetres_d_essai.h"
#include "outils/temoins.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/demo.h"
#include "platform/linux/traducteur.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using Sensor = Cpt_Normal_Extrn_Calibration;
using Command = Cmde_Normale_Extrn_Calibration;

struct Hôte : FenêtreHôte {
  void rafraichitTout() override { ++rafraichie; }
  int rafraichie = 0;
};

// Another program on the same database.
class Autre {
 public:
  explicit Autre(const std::string& fichier) {
    EXPECT_EQ(sqlite3_open(fichier.c_str(), &base_), SQLITE_OK);
  }
  ~Autre() { sqlite3_close(base_); }
  Autre(const Autre&) = delete;
  Autre& operator=(const Autre&) = delete;
  /// What it finds in the rows, or does to them.
  std::string Sql(const char* instruction) {
    std::string lu;
    const auto note = [](void* ici, int nombre, char** valeurs, char**) {
      for (int i = 0; i < nombre; ++i) {
        *static_cast<std::string*>(ici) +=
            std::string(valeurs[i] != nullptr ? valeurs[i] : "Null") + "|";
      }
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(base_, instruction, note, &lu, nullptr), SQLITE_OK);
    return lu;
  }

 private:
  sqlite3* base_ = nullptr;
};

// The demo frame, its database on disk, and the windows of a host without a screen.
class UnEtalonnage : public testing::Test {
 public:
  UnEtalonnage() {
    linux_::CréeBase(fichier, linux_::LignesDeDémonstration());
    Charge(false);
  }
  void Charge(bool lectureSeule) {
    chassis.emplace(machine.services);
    const auto base = Crée<linux_::BaseSqlite>(
        fichier, linux_::RéglagesBase{.lectureSeule = lectureSeule,
                                      .attenteVerrou = std::chrono::milliseconds(20)});
    chassis->TimerExact(machine.horloge);
    chassis->ChargeErreur(registre);
    chassis->ChargeLeChassis(base, 1);
    chassis->Lien(base, "1", nullptr, nullptr, traducteur);
    machine.Branche(*chassis);
    chassis->Initialise();
    messages.textes.clear();
  }
  Capteur& LeCapteur() { return *chassis->Capteurs()->Item("7"); }
  Commande& LaCommande() { return *chassis->Commandes()->Item("4"); }
  void Passe(double secondes) {
    for (const double fin = maintenant + secondes; maintenant < fin; maintenant += 0.005) {
      machine.AvanceJusquA(maintenant);
      chassis->MetàJour();
    }
  }
  std::string Sql(const char* instruction) { return Autre(fichier).Sql(instruction); }
  std::string LigneDuCapteur() {
    return Sql(R"(SELECT "Nom affiché", "Unité d'Etalonnage", "Point 2 - Point",
        "Point 2 - Unité", "Point 20 - Point", "Point 20 - Unité" FROM Capteur WHERE "Index"=7)");
  }

  essai::DossierProvisoire dossier;
  const std::string fichier = dossier.Fichier("demo.db");
  essai::Messages messages;
  essai::FenêtresDEssai fenêtres;
  Hôte hôte;
  sim::MachineSimulée machine{messages};
  Ref<essai::Registre> registre = Crée<essai::Registre>();
  Ref<linux_::Traducteur> traducteur = Crée<linux_::Traducteur>();
  std::optional<Chassis> chassis;
  double maintenant = 0;

 private:
  void SetUp() override { machine.services.fenêtres = &fenêtres; }
};

// As a person does it: the cell, the text, Enter.
template <class Feuille>
void Tape(Feuille& feuille, int rangée, int colonne, const std::string& texte) {
  feuille.ActiveCellule({rangée, colonne});
  feuille.Text1(texte);
  feuille.Text1_KeyPress(13);
}

TEST(AffichageCourt, TientEnSixCaractères) {
  const std::pair<double, const char*> cas[] = {{0, "0"},
                                                {-0.5, "-0,5"},
                                                {3.14159265, "3,1415"},
                                                {12345.678, "12345"},
                                                {1234567.25, "1234567"},
                                                {-1e-9, "0"}};
  for (const auto& [valeur, texte] : cas) EXPECT_EQ(AffichageCourt(valeur), texte);
}

TEST_F(UnEtalonnage, NEstOffertQuÀQuiLePermet) {
  chassis->Capteurs()->Item("4")->EtalonnageExterieur(&hôte);
  chassis->Commandes()->Item("2")->EtalonnageExterieur(&hôte);
  EXPECT_EQ(fenêtres.montrées, 0);
  EXPECT_TRUE(messages.textes.empty()) << "nothing happens, without a message";

  Sensor capteur;
  capteur.Reçoit(*chassis->Capteurs()->Item("4"));
  Command commande;
  commande.Reçoit(*chassis->Commandes()->Item("2"));
  EXPECT_EQ(messages.textes, std::vector<std::string>(2, "External calibration forbidden"));
  machine.services.fenêtres = nullptr;
  LeCapteur().EtalonnageExterieur(&hôte);
  EXPECT_FALSE(LeCapteur().ModeEdition());
  machine.services.fenêtres = &fenêtres;
  fenêtres.sansEcran = true;
  LeCapteur().EtalonnageExterieur(&hôte);
  EXPECT_EQ(registre->entrées.size(), 2U);
  fenêtres.sansEcran = false;
  LeCapteur().EtalonnageExterieur(&hôte);
  EXPECT_EQ(fenêtres.capteur->Propriétaire(), &hôte);
  fenêtres.capteur->Ferme();
  EXPECT_EQ(fenêtres.capteur->Propriétaire(), nullptr) << "as before the window that failed";
}

TEST_F(UnEtalonnage, EditeUneCelluleÀLaFois) {
  LeCapteur().EtalonnageExterieur(&hôte);
  Sensor& feuille = *fenêtres.capteur;
  EXPECT_EQ(feuille.Cellule({0, 0}), "Valeur brute");
  feuille.ActiveCellule({3, 1});
  EXPECT_EQ(feuille.Text1(), "0");
  using enum FeuilleEtalonnage::Suite;
  for (const char32_t code : std::u32string_view(U"0123456789.,+-\b")) {
    EXPECT_EQ(feuille.Text1_KeyPress(code), Passe) << static_cast<int>(code);
  }
  for (const char32_t code : std::u32string_view(U"aE /\t\x7f\u00e9")) {
    EXPECT_EQ(feuille.Text1_KeyPress(code), Mangée) << static_cast<int>(code);
  }
  feuille.Text1("-12,5");
  EXPECT_EQ(feuille.Text1_KeyPress(27), Mangée);
  EXPECT_EQ(feuille.Text1Sur(), std::nullopt);
  EXPECT_EQ(feuille.Cellule({3, 1}), "0") << "Escape leaves the cell";
  Tape(feuille, 3, 1, "-12,5");
  EXPECT_EQ(feuille.Cellule({3, 1}), "-12,5");
  feuille.ActiveCellule({20, 0});
  feuille.Text1("7");
  feuille.ActiveCellule({4, 0});
  EXPECT_EQ(feuille.Cellule({20, 0}), "7") << "going to another cell keeps the text";
  feuille.Text1("+-");
  feuille.Text1_LostFocus();
  EXPECT_FALSE(feuille.CelluleLisible({4, 0}));
  feuille.ActiveCellule({0, 1});
  EXPECT_EQ(feuille.Text1Sur(), std::nullopt) << "the header is not edited";
}

TEST_F(UnEtalonnage, GardeLesVingtPointsDunCapteur) {
  Passe(1);
  LeCapteur().EtalonnageExterieur(&hôte);
  EXPECT_TRUE(LeCapteur().ModeEdition());
  EXPECT_TRUE(chassis->Capteurs()->ModeEdition());
  const Ref<Sensor> feuille = fenêtres.capteur;
  EXPECT_EQ(feuille->Lbl_Nom_Interne_Cpt(), "Extensomètre");
  EXPECT_EQ(feuille->CommentaireEtalonnage(), LeCapteur().CommentaireEtalonnage());
  EXPECT_EQ(feuille->LblValeurBrute(), AffichageCourt(LeCapteur().ValeurEnPoints()));
  EXPECT_EQ(feuille->LblValeurCourante(), AffichageCourt(LeCapteur().ValeurCourante()));
  EXPECT_EQ(feuille->TxtNomAffiche + feuille->TxtUnite, "Extensomètremm");
  feuille->TxtNomAffiche = "Extensomètre n° 2";
  feuille->TxtUnite = "µm";
  for (int i = 1; i <= 20; ++i) {
    Tape(*feuille, i, Sensor::kPoints, std::to_string(3000 * i) + (i % 2 == 0 ? ",5" : ".5"));
    Tape(*feuille, i, Sensor::kUnités, std::to_string(50 * i));
  }
  feuille->ActiveCellule({20, Sensor::kUnités});
  feuille->Text1("999,5");  // OK by its key, from inside the cell
  LeCapteur().LeRecordset()->MoveNext();
  std::string unité;
  LeCapteur().AbonneUnitChange([&](const std::string& nouvelle) {
    unité = nouvelle + " " + TexteDeNombre(LeCapteur().PointX(20));
    feuille->BtnCancel();
  });
  feuille->BtnOK();
  EXPECT_FALSE(feuille->Visible());
  EXPECT_FALSE(LeCapteur().ModeEdition());
  EXPECT_EQ(unité, "µm 999,5") << "the unit is told with its table in place";
  EXPECT_EQ(LigneDuCapteur(), "Extensomètre n° 2|µm|6000.5|100.0|60000.5|999.5|");
  EXPECT_EQ(LeCapteur().NomAfficheDuCapteur(), "Extensomètre n° 2");
}

TEST_F(UnEtalonnage, TareEtAnnuleSansRienGarder) {
  LeCapteur().EtalonnageExterieur(&hôte);
  const Ref<Sensor> feuille = fenêtres.capteur;
  Passe(0.5);
  feuille->ChkTare(true);
  Passe(0.5);
  EXPECT_TRUE(LeCapteur().EtatDeLaTare());
  const std::string avant = LigneDuCapteur();
  Tape(*feuille, 2, 1, "9");
  feuille->TxtUnite = "pouces";
  feuille->BtnCancel();
  EXPECT_FALSE(LeCapteur().ModeEdition());
  EXPECT_EQ(LigneDuCapteur(), avant);
  EXPECT_EQ(LeCapteur().PointX(2), 1);
  EXPECT_TRUE(LeCapteur().EtatDeLaTare()) << "a tare stays";
  LeCapteur().EtalonnageExterieur(&hôte);
  EXPECT_TRUE(fenêtres.capteur->ChkTare());
  fenêtres.capteur->ChkTare(false);
  EXPECT_FALSE(LeCapteur().EtatDeLaTare());
}

TEST_F(UnEtalonnage, SeRouvreSurLaMêmeFeuille) {
  FenêtreHôte autre;
  LeCapteur().EtalonnageExterieur(&hôte);
  const Ref<Sensor> feuille = fenêtres.capteur;
  Tape(*feuille, 2, 1, "9");
  LeCapteur().EtalonnageExterieur(&autre);
  EXPECT_EQ(fenêtres.capteur, feuille);
  EXPECT_EQ(feuille->Cellule({2, 1}), "9") << "on the screen it keeps what is being typed";
  EXPECT_EQ(feuille->Propriétaire(), &autre);
  feuille->ActiveCellule({2, 1});
  feuille->Text1("8");
  feuille->Ferme();
  EXPECT_EQ(feuille->Propriétaire(), &hôte) << "the owner before is put back";
  EXPECT_TRUE(LeCapteur().ModeEdition());
  LeCapteur().EtalonnageExterieur(&hôte);
  feuille->Text1_LostFocus();
  EXPECT_EQ(feuille->Cellule({2, 1}), "1") << "shown again, it is filled again";
  LeCapteur().ResetFeuilleEtalonnage();
  EXPECT_FALSE(feuille->Visible()) << "nobody would tell it any more that the sensor goes";
  LeCapteur().EtalonnageExterieur(&hôte);
  LeCapteur().AbonneUnitChange([&](const std::string&) { chassis.reset(); });
  fenêtres.capteur->BtnOK();
  EXPECT_FALSE(fenêtres.capteur->Visible());
  feuille->Timer1();
  feuille->BtnOK();
  feuille->BtnCancel();
}

// Whatever goes wrong, row and sensor stay as they were, and what was typed too.
TEST_F(UnEtalonnage, NeGardeRienÀMoitié) {
  struct Cas {
    const char* quoi;
    const char* cellule;      // typed in the units of point 3
    const char* instruction;  // of another program while the form is open
    bool lectureSeule;
    int numéro;
    const char* précision;
  } cas[] = {
      {"an empty cell", " ", "", false, 94, "Point 3 - Unité"},
      {"letters", "12e", "", false, 13, "Point 3 - Unité"},
      {"two signs", "1-2", "", false, 13, "Point 3 - Unité"},
      {"a read-only database", "5", "", true, 3027, ""},
      {"a database that another program holds", "5", "BEGIN EXCLUSIVE", false, 3260, ""},
      {"a row deleted", "5", "DELETE FROM Capteur WHERE \"Index\"=7", false, 3167, ""},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    Charge(c.lectureSeule);
    LeCapteur().EtalonnageExterieur(&hôte);
    const Ref<Sensor> feuille = fenêtres.capteur;
    const std::string avant = LigneDuCapteur();
    Tape(*feuille, 2, 0, "60000");
    Tape(*feuille, 3, 1, c.cellule);
    feuille->TxtUnite = "pouces";
    std::optional<Autre> autre(std::in_place, fichier);
    autre->Sql(c.instruction);
    try {
      feuille->BtnOK();
      ADD_FAILURE() << "nothing was told";
    } catch (const Echec& échec) {
      EXPECT_EQ(échec.NuméroErreur(), c.numéro);
      EXPECT_NE(échec.Description().find(c.précision), std::string::npos) << échec.Description();
    }
    autre.reset();
    EXPECT_EQ(LigneDuCapteur(), c.numéro == 3167 ? "" : avant);
    EXPECT_EQ(LeCapteur().PointY(2), 65536);
    EXPECT_EQ(LeCapteur().UnitéEtalonnage(), "mm");
    EXPECT_TRUE(feuille->Visible());
    EXPECT_EQ(feuille->Cellule({2, 0}), "60000");
  }
}

// What nobody typed is neither written nor rounded, and needs no database that can be written.
TEST_F(UnEtalonnage, NEcritQueCeQuiAEtéChangé) {
  Sql("UPDATE Capteur SET \"Point 1 - Point\"=1.0/3, \"Point 2 - Unité\"=2.0/3, \"Nom "
      "affiché\"=NULL");
  Sql("UPDATE Commande SET \"Point 2 - Point\"=10000.0/3, \"Capteur de recopie\"='Force '");
  const auto tout = [&] { return Sql("SELECT * FROM Capteur") + Sql("SELECT * FROM Commande"); };
  const std::string avant = tout();
  for (const bool lectureSeule : {true, false}) {
    Charge(lectureSeule);
    LeCapteur().EtalonnageExterieur(&hôte);
    fenêtres.capteur->ActiveCellule({1, 0});
    fenêtres.capteur->BtnOK();
    LaCommande().EtalonnageExterieur(&hôte);
    fenêtres.commande->BtnOK();
    EXPECT_TRUE(messages.textes.empty()) << messages.textes.front();
    EXPECT_FALSE(fenêtres.capteur->Visible() || fenêtres.commande->Visible());
    EXPECT_EQ(tout(), avant);
    EXPECT_EQ(LeCapteur().PointY(1), 1.0 / 3);
  }
  // Typed beside them, and moved, they keep all their digits.
  LeCapteur().EtalonnageExterieur(&hôte);
  const Ref<Sensor> feuille = fenêtres.capteur;
  EXPECT_EQ(feuille->DernièreRangée(), 2);
  feuille->InsèreRangée(2);
  EXPECT_EQ(feuille->Cellule({2, 0}) + feuille->Cellule({2, 1}), "00");
  EXPECT_EQ(feuille->DernièreRangée(), 3);
  Tape(*feuille, 4, 0, "5e");
  EXPECT_EQ(feuille->DernièreRangée(), 4) << "what is no number yet is not unused";
  feuille->SupprimeRangée(4);
  Tape(*feuille, 2, 0, "7");
  Tape(*feuille, 2, 1, "7");
  feuille->BtnOK();
  EXPECT_EQ(Sql(R"(SELECT "Point 1 - Point"=1.0/3, "Point 2 - Unité", "Point 3 - Unité"=2.0/3,
                "Point 3 - Point", "Nom affiché" FROM Capteur WHERE "Index"=7)"),
            "1|7.0|1|65536.0|Null|");
  LaCommande().EtalonnageExterieur(&hôte);
  fenêtres.commande->InsèreRangée(2);
  fenêtres.commande->BtnOK();
  EXPECT_EQ(Sql("SELECT \"Point 3 - Point\"=10000.0/3 FROM Commande WHERE \"Index\"=4"), "1|");
  LeCapteur().EtalonnageExterieur(&hôte);
  Tape(*fenêtres.capteur, 20, 0, "1");
  fenêtres.capteur->InsèreRangée(1);
  EXPECT_EQ(fenêtres.capteur->Cellule({20, 0}), "1") << "no row is lost";
}

TEST_F(UnEtalonnage, MontreLaValeurDeLaTableSaisie) {
  Passe(1);
  LeCapteur().EtalonnageExterieur(&hôte);
  const Ref<Sensor> capteur = fenêtres.capteur;
  EXPECT_EQ(capteur->LblValeurSaisie(), capteur->LblValeurCourante());
  capteur->ActiveCellule({2, Sensor::kUnités});
  capteur->Text1("2000");
  capteur->Timer1();
  EXPECT_EQ(capteur->LblValeurSaisie(),
            AffichageCourt(2000 * LeCapteur().ValeurEnPoints() / LeCapteur().PointY(2)));
  EXPECT_EQ(LeCapteur().PointX(2), 1) << "the sensor goes on with its own table";
  for (const char* saisi : {"", "1-", "12e"}) {
    capteur->Text1(saisi);
    capteur->Timer1();
    EXPECT_EQ(capteur->LblValeurSaisie(), "?") << saisi;
  }
  LaCommande().EtalonnageExterieur(&hôte);
  const Ref<Command> commande = fenêtres.commande;
  Tape(*commande, 2, Command::kPoints, "2000");
  commande->Timer1();
  EXPECT_EQ(commande->LblValeurSaisie(),
            AffichageCourt(20 * LaCommande().CapteurDeRecopie()->ValeurCourante()));
}

// Where the installation names who calibrates, a new table bears that name and the day.
TEST_F(UnEtalonnage, SigneUneNouvelleTable) {
  const char* const kSignatures =
      R"(SELECT "Nom de l'Etalonneur", "Date d'Etalonnage" FROM Capteur WHERE "Index"=7 UNION ALL
         SELECT "Nom de l'Etalonneur", "Date d'Etalonnage" FROM Commande WHERE "Index"=4)";
  const std::string avant = Sql(kSignatures);
  const auto étalonne = [&](const char* nom, const char* points) {
    LeCapteur().EtalonnageExterieur(&hôte);
    fenêtres.capteur->TxtNomAffiche = nom;
    Tape(*fenêtres.capteur, 3, 0, points);
    fenêtres.capteur->BtnOK();
    LaCommande().EtalonnageExterieur(&hôte);
    Tape(*fenêtres.commande, 3, 0, points);
    fenêtres.commande->BtnOK();
    return Sql(kSignatures);
  };
  EXPECT_EQ(étalonne("a", "70000"), avant);
  machine.services.réglages.étalonnage = {"J. Martin", [] { return std::string("2026-11-25"); }};
  EXPECT_EQ(étalonne("b", "70000"), avant) << "another name is no calibration";
  EXPECT_EQ(étalonne("b", "70001"), "J. Martin|2026-11-25|J. Martin|2026-11-25|");
  EXPECT_EQ(LeCapteur().NomEtalonneur() + LaCommande().DateEtalonnage(), "J. Martin2026-11-25");
}

// What another program saved while the form stood open is neither overwritten nor mixed.
TEST_F(UnEtalonnage, RefuseUneTableChangéeEntreTemps) {
  LeCapteur().EtalonnageExterieur(&hôte);
  Tape(*fenêtres.capteur, 2, 0, "60000");
  LaCommande().EtalonnageExterieur(&hôte);
  Tape(*fenêtres.commande, 2, Command::kPoints, "2000");
  Sql(R"(UPDATE Capteur SET "Point 1 - Unité"=4.5, "Nom de l'Etalonneur"='Labo' WHERE "Index"=7)");
  Sql(R"(UPDATE Commande SET "Point 1 - Unité"=4.5 WHERE "Index"=4)");
  try {
    fenêtres.capteur->BtnOK();
    ADD_FAILURE() << "nothing was told";
  } catch (const Echec& échec) {
    EXPECT_EQ(échec.NuméroErreur(), 3197);
    EXPECT_NE(échec.Description().find("'Labo'"), std::string::npos) << échec.Description();
  }
  fenêtres.commande->BtnOK();
  EXPECT_NE(messages.textes.at(0).find("trouvée '4,5'"), std::string::npos) << messages.textes[0];
  EXPECT_TRUE(fenêtres.capteur->Visible() && fenêtres.commande->Visible());
  EXPECT_EQ(LeCapteur().PointY(2), 65536);
  EXPECT_EQ(LaCommande().PointY(2), 4095);
}

// A certified row, whose column the laboratory has added, tells what did not come by its forms.
TEST_F(UnEtalonnage, TientLaSommeDeContrôle) {
  const auto ditsAuChargement = [&] {
    messages.textes.clear();
    Chassis autre(machine.services);
    autre.TimerExact(machine.horloge);
    autre.ChargeErreur(registre);
    autre.ChargeLeChassis(Crée<linux_::BaseSqlite>(fichier), 1);
    std::string dits;
    for (const std::string& texte : messages.textes) {
      if (texte.find("somme de contrôle") != std::string::npos) dits += texte.substr(0, 27) + ";";
    }
    return dits;
  };
  const auto étalonne = [&](const char* points) {
    Charge(false);
    LeCapteur().EtalonnageExterieur(&hôte);
    Tape(*fenêtres.capteur, 2, 0, points);
    fenêtres.capteur->BtnOK();
    LaCommande().EtalonnageExterieur(&hôte);
    Tape(*fenêtres.commande, 2, 1, points);
    fenêtres.commande->BtnOK();
    return ditsAuChargement();
  };
  for (const char* table : {"Capteur", "Commande"}) {
    Sql((std::string("ALTER TABLE ") + table + " ADD COLUMN \"Somme de contrôle\" TEXT").c_str());
  }
  EXPECT_EQ(étalonne("60000"), "");
  EXPECT_EQ(Sql("SELECT length(\"Somme de contrôle\") FROM Capteur WHERE \"Index\" IN (6, 7)"),
            "Null|16|");
  EXPECT_EQ(étalonne("60001"), "");
  Sql("ALTER TABLE Capteur ADD COLUMN Plus TEXT");
  EXPECT_EQ(ditsAuChargement(), "") << "a column of somebody else, still empty";
  Sql("UPDATE Capteur SET Canal=Canal+1 WHERE \"Index\"=7");
  Sql("UPDATE Commande SET \"Point 1 - Point\"=1e-9 WHERE \"Index\"=4");
  const std::string dits = "Attention : Le capteur 'Ext;Attention : La commande 'Re;";
  EXPECT_EQ(ditsAuChargement(), dits);
  EXPECT_EQ(étalonne("60003"), dits) << "nobody has looked at what changed";
  Sql("UPDATE Capteur SET \"Somme de contrôle\"=NULL");
  EXPECT_EQ(étalonne("60004"), dits.substr(28));

  Sql("UPDATE Capteur SET \"Somme de contrôle\"=NULL");
  const auto partie = linux_::BaseSqlite(fichier).OpenRecordset(
      "SELECT [Index], [Nom affiché], [Somme de contrôle] FROM [Capteur]");
  partie->Edit();
  partie->Ecrit("Nom affiché", std::string("x"));
  partie->Update();
  EXPECT_EQ(Sql("SELECT count(\"Somme de contrôle\") FROM Capteur"), "0|") << "not that of a part";
}

// The record set stands on the row of another object: nothing is written.
TEST_F(UnEtalonnage, RefuseUneLigneQuiABougé) {
  const auto base = Crée<linux_::BaseSqlite>(fichier);
  LeCapteur().LeRecordset(base->OpenRecordset("SELECT * FROM [Capteur]"));
  LaCommande().LeRecordset(base->OpenRecordset("SELECT * FROM [Commande]"));
  const char* const kToutes = "SELECT \"Unité d'Etalonnage\", \"Point 2 - Unité\" FROM Capteur";
  const std::string avant = Sql(kToutes);
  LeCapteur().EtalonnageExterieur(&hôte);
  LaCommande().EtalonnageExterieur(&hôte);
  fenêtres.capteur->TxtUnite = "pouces";
  fenêtres.capteur->BtnOK();
  fenêtres.commande->BtnOK();
  EXPECT_EQ(messages.textes, std::vector<std::string>(2, "Error during data backup"));
  EXPECT_FALSE(fenêtres.capteur->Visible());
  EXPECT_FALSE(fenêtres.commande->Visible());
  EXPECT_EQ(Sql(kToutes), avant);
}

TEST_F(UnEtalonnage, ChangeTableEtCapteurDuneCommande) {
  Passe(1);
  LaCommande().EtalonnageExterieur(&hôte);
  fenêtres.commande->Ferme();
  LaCommande().EtalonnageExterieur(&hôte);
  EXPECT_TRUE(LaCommande().ModeEdition());
  const Ref<Command> feuille = fenêtres.commande;
  const auto& [labels, choisi] = feuille->CmbCapteurARecopier;
  EXPECT_EQ(labels.size(), static_cast<std::size_t>(chassis->Capteurs()->Count()));
  EXPECT_EQ(labels.at(choisi.value()), "Force");
  EXPECT_EQ(feuille->Cellule({2, Command::kUnités}), "100");
  EXPECT_EQ(feuille->Cellule({2, Command::kPoints}), "4095");
  EXPECT_EQ(feuille->LblValeurSortie(), AffichageCourt(LaCommande().ValeurCouranteEnPoints()));
  EXPECT_EQ(feuille->LblValeurCapteur(),
            AffichageCourt(LaCommande().CapteurDeRecopie()->ValeurCourante()));
  EXPECT_NE(feuille->LblValeurCapteur(), "0");

  Tape(*feuille, 2, Command::kPoints, "");
  LaCommande().EtalonnageExterieur(&hôte);
  feuille->BtnOK();
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_NE(messages.textes[0].find("Erreur N°94"), std::string::npos);
  EXPECT_NE(messages.textes[0].find("Point 2 - Point"), std::string::npos);
  EXPECT_TRUE(feuille->Visible());

  feuille->ActiveCellule({2, Command::kPoints});
  feuille->Text1("2047,5");
  LaCommande().EtalonnageExterieur(&hôte);
  EXPECT_EQ(feuille->Text1(), "2047,5") << "on the screen it keeps what is being typed";
  const auto four = std::ranges::find(labels, "Four 1");
  feuille->CmbCapteurARecopier.choisi = static_cast<std::size_t>(four - labels.begin());
  feuille->BtnOK();
  EXPECT_FALSE(feuille->Visible());
  EXPECT_FALSE(LaCommande().ModeEdition());
  EXPECT_EQ(hôte.rafraichie, 1);
  EXPECT_EQ(LaCommande().CapteurDeRecopie()->Label(), "Four 1");
  EXPECT_EQ(LaCommande().PointY(2), 2047.5);
  EXPECT_EQ(Sql(R"(SELECT "Capteur de recopie", "Point 2 - Unité", typeof("Point 2 - Point"),
                "Point 2 - Point" FROM Commande WHERE "Index"=4)"),
            "Four 1|100.0|real|2047.5|");

  FenêtreHôte sansRien;
  LaCommande().EtalonnageExterieur(&sansRien);
  fenêtres.commande->Ferme();
  LaCommande().EtalonnageExterieur(&sansRien);
  EXPECT_EQ(fenêtres.commande->CmbCapteurARecopier.textes.size(), labels.size());
  fenêtres.commande->CmbCapteurARecopier.choisi.reset();
  LeCapteur().Label("");
  fenêtres.commande->BtnOK();
  EXPECT_EQ(LaCommande().CapteurDeRecopie()->Label(), "Four 1") << "no choice leaves the sensor";
  EXPECT_EQ(Sql("SELECT \"Capteur de recopie\" FROM Commande WHERE \"Index\"=4"), "|");
  EXPECT_NE(messages.textes.back().find("Erreur N°438"), std::string::npos);
  EXPECT_FALSE(LaCommande().ModeEdition());
}

// Somebody holds a command longer than its frame lives.
TEST_F(UnEtalonnage, SurvitÀSonChassis) {
  LaCommande().EtalonnageExterieur(&hôte);
  const CommandeRef commande = chassis->Commandes()->Item("4");
  chassis->Commandes()->Remove("4");
  chassis.reset();
  fenêtres.commande->BtnOK();
  EXPECT_FALSE(fenêtres.commande->Visible());
  fenêtres.commande->Timer1();
  commande->EtalonnageExterieur(&hôte);
  EXPECT_TRUE(registre->Contient("EtalonnageExterieur"));
}

TEST_F(UnEtalonnage, SurvitÀLaFenêtreDeLHôte) {
  auto passagère = std::make_unique<Hôte>();
  LaCommande().EtalonnageExterieur(passagère.get());
  passagère.reset();
  const Ref<Command> feuille = fenêtres.commande;
  Tape(*feuille, 2, Command::kPoints, "2000");
  feuille->BtnOK();
  EXPECT_EQ(LaCommande().PointY(2), 2000);
  EXPECT_TRUE(messages.textes.empty()) << "what was kept is no failure";

  // A host that loads everything anew, and fails at it.
  struct Recharge : FenêtreHôte {
    void rafraichitTout() override {
      chassis->reset();
      throw Echec(Numéro::BaseVerrouillée);
    }
    std::optional<Chassis>* chassis = nullptr;
  } recharge;
  recharge.chassis = &chassis;
  LaCommande().EtalonnageExterieur(&recharge);
  fenêtres.commande->BtnOK();
  EXPECT_NE(messages.textes.at(0).find("Erreur N°3260"), std::string::npos);
}

TEST_F(UnEtalonnage, NAccumulePasDEchecsSansCanal) {
  Sql("UPDATE Commande SET Canal=NULL");
  Charge(false);
  LaCommande().EtalonnageExterieur(&hôte);
  registre->entrées.clear();
  fenêtres.commande->Timer1();
  EXPECT_TRUE(registre->entrées.empty());
  LaCommande().ResetFeuilleEtalonnage();
  EXPECT_FALSE(fenêtres.commande->Visible());
}

}  // namespace
}  // namespace zuma
