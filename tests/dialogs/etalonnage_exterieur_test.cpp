// Calibration of a sensor and of a command on the machine, from the form to the row and the object.
#include <gtest/gtest.h>

#include "boards/table_des_drivers.h"
#include "dialogs/affichage_court.h"
#include "outils/cas.h"
#include "outils/chassis_de_demo.h"
#include "outils/fenetres_d_essai.h"
#include "outils/temoins.h"
#include "platform/linux/base_sqlite.h"
#include "sim/machine_simulee.h"

namespace zuma::essai {
namespace {

using Sensor = Cpt_Normal_Extrn_Calibration;
using Command = Cmde_Normale_Extrn_Calibration;
using Textes = std::vector<std::string>;

struct Hôte : FenêtreHôte {
  void rafraichitTout() override { ++rafraichie; }
  int rafraichie = 0;
};

// The demo frame, its database on disk, and the windows of a host without a screen.
class UnEtalonnage : public testing::Test {
 public:
  UnEtalonnage() { Charge(false); }
  void Charge(bool lectureSeule) {
    chassis.emplace(machine.services);
    const auto base = Crée<linux_::BaseSqlite>(
        demo.chemin, linux_::RéglagesBase{.lectureSeule = lectureSeule,
                                          .attenteVerrou = std::chrono::milliseconds(20)});
    chassis->TimerExact(machine.horloge);
    chassis->ChargeErreur(registre);
    chassis->ChargeLeChassis(base, 1);
    chassis->Lien(base, "1", nullptr, nullptr, Crée<linux_::Traducteur>());
    machine.Branche(*chassis);
    chassis->Initialise();
    messages.textes.clear();
  }
  Capteur& LeCapteur() { return *chassis->Capteurs()->Item("7"); }
  Commande& LaCommande() { return *chassis->Commandes()->Item("4"); }
  Ref<Sensor> OuvreCapteur(FenêtreHôte* mère) {
    LeCapteur().EtalonnageExterieur(mère);
    return fenêtres.capteur;
  }
  Ref<Sensor> OuvreCapteur() { return OuvreCapteur(&hôte); }
  Ref<Command> OuvreCommande(FenêtreHôte* mère) {
    LaCommande().EtalonnageExterieur(mère);
    return fenêtres.commande;
  }
  Ref<Command> OuvreCommande() { return OuvreCommande(&hôte); }
  void Passe(double secondes) {
    for (const double fin = maintenant + secondes; maintenant < fin; maintenant += 0.005) {
      machine.AvanceJusquA(maintenant);
      chassis->MetàJour();
    }
  }
  // What another program finds in the rows, or does to them.
  std::string Sql(const std::string& instruction) const {
    linux_::ConnexionSqlite base(demo.chemin, linux_::Accès::Ecriture, std::chrono::seconds(1));
    linux_::InstructionSqlite lecture(base, instruction);
    std::string lu;
    while (lecture.Suivante()) {
      for (int i = 0; i < sqlite3_column_count(lecture.Brut()); ++i) {
        const auto* texte = reinterpret_cast<const char*>(sqlite3_column_text(lecture.Brut(), i));
        lu += std::string(texte != nullptr ? texte : "Null") + "|";
      }
    }
    return lu;
  }
  std::string LigneDuCapteur() const {
    return Sql(R"(SELECT "Nom affiché", "Unité d'Etalonnage", "Point 2 - Point",
        "Point 2 - Unité", "Point 20 - Point", "Point 20 - Unité" FROM Capteur WHERE "Index"=7)");
  }

  BaseDeDémo demo;
  Messages messages;
  FenêtresDEssai fenêtres;
  Hôte hôte;
  sim::MachineSimulée machine{messages, CréeLesDrivers()};
  Ref<Registre> registre = Crée<Registre>();
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
  for (const auto& [valeur, texte] : Cas<double, const char*>{{0, "0"},
                                                              {-0.5, "-0,5"},
                                                              {3.14159265, "3,1415"},
                                                              {12345.678, "12345"},
                                                              {1234567.25, "1234567"},
                                                              {-1e-9, "0"}}) {
    EXPECT_EQ(AffichageCourt(valeur), texte);
  }
}

TEST_F(UnEtalonnage, NEstOffertQuÀQuiLePermet) {
  const CapteurRef capteur = chassis->Capteurs()->Item("4");
  const CommandeRef commande = chassis->Commandes()->Item("2");
  capteur->EtalonnageExterieur(&hôte);
  commande->EtalonnageExterieur(&hôte);
  EXPECT_EQ(fenêtres.montrées, 0);
  EXPECT_TRUE(messages.textes.empty()) << "nothing happens, without a message";
  Sensor().Reçoit(*capteur);
  Command().Reçoit(*commande);
  EXPECT_EQ(messages.textes, Textes(2, "External calibration forbidden"));
  machine.services.fenêtres = nullptr;
  (void)OuvreCapteur();
  EXPECT_FALSE(LeCapteur().ModeEdition());
  machine.services.fenêtres = &fenêtres;
  fenêtres.sansEcran = true;
  (void)OuvreCapteur();
  EXPECT_EQ(registre->entrées.size(), 2U);
  fenêtres.sansEcran = false;
  EXPECT_EQ(OuvreCapteur()->Propriétaire(), &hôte);
  fenêtres.capteur->Ferme();
  EXPECT_EQ(fenêtres.capteur->Propriétaire(), nullptr) << "as before the window that failed";
}

TEST_F(UnEtalonnage, EditeUneCelluleÀLaFois) {
  Sensor& feuille = *OuvreCapteur();
  EXPECT_EQ(feuille.Cellule({0, 0}), "Valeur brute");
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
  const Ref<Sensor> feuille = OuvreCapteur();
  EXPECT_TRUE(LeCapteur().ModeEdition() && chassis->Capteurs()->ModeEdition());
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
  EXPECT_FALSE(feuille->Visible() || LeCapteur().ModeEdition());
  EXPECT_EQ(unité, "µm 999,5") << "the unit is told with its table in place";
  EXPECT_EQ(LigneDuCapteur(), "Extensomètre n° 2|µm|6000.5|100.0|60000.5|999.5|");
  EXPECT_EQ(LeCapteur().NomAfficheDuCapteur(), "Extensomètre n° 2");
}

TEST_F(UnEtalonnage, TareEtAnnuleSansRienGarder) {
  const Ref<Sensor> feuille = OuvreCapteur();
  Passe(0.5);
  feuille->ChkTare(true);
  Passe(0.5);
  const std::string avant = LigneDuCapteur();
  Tape(*feuille, 2, 1, "9");
  feuille->TxtUnite = "pouces";
  feuille->BtnCancel();
  EXPECT_FALSE(LeCapteur().ModeEdition());
  EXPECT_EQ(LigneDuCapteur(), avant);
  EXPECT_EQ(LeCapteur().PointX(2), 1);
  EXPECT_TRUE(LeCapteur().EtatDeLaTare()) << "a tare stays";
  EXPECT_TRUE(OuvreCapteur()->ChkTare());
  fenêtres.capteur->ChkTare(false);
  EXPECT_FALSE(LeCapteur().EtatDeLaTare());
}

TEST_F(UnEtalonnage, SeRouvreSurLaMêmeFeuille) {
  FenêtreHôte autre;
  const Ref<Sensor> feuille = OuvreCapteur();
  Tape(*feuille, 2, 1, "9");
  EXPECT_EQ(OuvreCapteur(&autre), feuille);
  EXPECT_EQ(feuille->Cellule({2, 1}), "9") << "on the screen it keeps what is being typed";
  EXPECT_EQ(feuille->Propriétaire(), &autre);
  feuille->ActiveCellule({2, 1});
  feuille->Text1("8");
  feuille->Ferme();
  EXPECT_EQ(feuille->Propriétaire(), &hôte) << "the owner before is put back";
  EXPECT_TRUE(LeCapteur().ModeEdition());
  (void)OuvreCapteur();
  feuille->Text1_LostFocus();
  EXPECT_EQ(feuille->Cellule({2, 1}), "1") << "shown again, it is filled again";
  LeCapteur().ResetFeuilleEtalonnage();
  EXPECT_FALSE(feuille->Visible()) << "nobody would tell it any more that the sensor goes";
  (void)OuvreCapteur();
  LeCapteur().AbonneUnitChange([&](const std::string&) { chassis.reset(); });
  fenêtres.capteur->BtnOK();
  EXPECT_FALSE(fenêtres.capteur->Visible());
  feuille->Timer1();
  feuille->BtnOK();
  feuille->BtnCancel();
}

// Whatever goes wrong, row and sensor stay as they were, and what was typed too.
TEST_F(UnEtalonnage, NeGardeRienÀMoitié) {
  // Typed in the units of point 3, what another program does meanwhile, number and words.
  for (const auto& [cellule, instruction, lectureSeule, numéro, précision] :
       Cas<const char*, const char*, bool, int, const char*>{
           {" ", "", false, 94, "Point 3 - Unité"},
           {"12e", "", false, 13, "Point 3 - Unité"},
           {"1-2", "", false, 13, "Point 3 - Unité"},
           {"5", "", true, 3027, ""},
           {"5", "BEGIN EXCLUSIVE", false, 3260, ""},
           {"5", "DELETE FROM Capteur WHERE \"Index\"=7", false, 3167, ""},
       }) {
    SCOPED_TRACE(numéro);
    Charge(lectureSeule);
    const Ref<Sensor> feuille = OuvreCapteur();
    const std::string avant = LigneDuCapteur();
    Tape(*feuille, 2, 0, "60000");
    Tape(*feuille, 3, 1, cellule);
    feuille->TxtUnite = "pouces";
    std::optional<linux_::ConnexionSqlite> autre(std::in_place, demo.chemin,
                                                 linux_::Accès::Ecriture, std::chrono::seconds(1));
    autre->Exécute(instruction);
    try {
      feuille->BtnOK();
      ADD_FAILURE() << "nothing was told";
    } catch (const Echec& échec) {
      EXPECT_EQ(échec.NuméroErreur(), numéro);
      EXPECT_NE(échec.Description().find(précision), std::string::npos) << échec.Description();
    }
    autre.reset();
    EXPECT_EQ(LigneDuCapteur(), numéro == 3167 ? "" : avant);
    EXPECT_EQ(LeCapteur().PointY(2), 65536);
    EXPECT_EQ(LeCapteur().UnitéEtalonnage(), "mm");
    EXPECT_TRUE(feuille->Visible());
    EXPECT_EQ(feuille->Cellule({2, 0}), "60000");
  }
}

// What nobody typed is neither written nor rounded, and needs no database that can be written.
TEST_F(UnEtalonnage, NEcritQueCeQuiAEtéChangé) {
  Sql(R"(UPDATE Capteur SET "Point 1 - Point"=1.0/3, "Point 2 - Unité"=2.0/3, "Nom affiché"=NULL)");
  Sql(R"(UPDATE Commande SET "Point 2 - Point"=10000.0/3, "Capteur de recopie"='Force ')");
  const auto tout = [&] { return Sql("SELECT * FROM Capteur") + Sql("SELECT * FROM Commande"); };
  const std::string avant = tout();
  for (const bool lectureSeule : {true, false}) {
    Charge(lectureSeule);
    OuvreCapteur()->ActiveCellule({1, 0});
    fenêtres.capteur->BtnOK();
    OuvreCommande()->BtnOK();
    EXPECT_EQ(messages.textes, Textes());
    EXPECT_FALSE(fenêtres.capteur->Visible() || fenêtres.commande->Visible());
    EXPECT_EQ(tout(), avant);
    EXPECT_EQ(LeCapteur().PointY(1), 1.0 / 3);
  }
  // Typed beside them, and moved, they keep all their digits.
  const Ref<Sensor> feuille = OuvreCapteur();
  EXPECT_EQ(feuille->DernièreRangée(), 2);
  feuille->InsèreRangée(2);
  EXPECT_EQ(feuille->Cellule({2, 0}) + feuille->Cellule({2, 1}), "00");
  EXPECT_EQ(feuille->DernièreRangée(), 3);
  Tape(*feuille, 4, 0, "5e");
  EXPECT_EQ(feuille->DernièreRangée(), 4) << "what is no number yet is not unused";
  feuille->SupprimeRangée(4);
  for (const int colonne : {0, 1}) Tape(*feuille, 2, colonne, "7");
  feuille->BtnOK();
  EXPECT_EQ(Sql(R"(SELECT "Point 1 - Point"=1.0/3, "Point 2 - Unité", "Point 3 - Unité"=2.0/3,
                "Point 3 - Point", "Nom affiché" FROM Capteur WHERE "Index"=7)"),
            "1|7.0|1|65536.0|Null|");
  OuvreCommande()->InsèreRangée(2);
  fenêtres.commande->BtnOK();
  EXPECT_EQ(Sql("SELECT \"Point 3 - Point\"=10000.0/3 FROM Commande WHERE \"Index\"=4"), "1|");
  Tape(*OuvreCapteur(), 20, 0, "1");
  fenêtres.capteur->InsèreRangée(1);
  EXPECT_EQ(fenêtres.capteur->Cellule({20, 0}), "1") << "no row is lost";
}

TEST_F(UnEtalonnage, MontreLaValeurDeLaTableSaisie) {
  Passe(1);
  const Ref<Sensor> capteur = OuvreCapteur();
  EXPECT_EQ(capteur->LblValeurSaisie(), capteur->LblValeurCourante());
  capteur->ActiveCellule({2, Sensor::kUnités});
  const double brute = LeCapteur().ValeurEnPoints();
  const std::string millième = AffichageCourt(2000 * brute / LeCapteur().PointY(2));
  for (const auto& [saisi, valeur] :
       Cas<const char*, std::string>{{"2000", millième}, {"", "?"}, {"1-", "?"}, {"12e", "?"}}) {
    capteur->Text1(saisi);
    capteur->Timer1();
    EXPECT_EQ(capteur->LblValeurSaisie(), valeur) << saisi;
  }
  EXPECT_EQ(LeCapteur().PointX(2), 1) << "the sensor goes on with its own table";
  const Ref<Command> commande = OuvreCommande();
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
    OuvreCapteur()->TxtNomAffiche = nom;
    Tape(*fenêtres.capteur, 3, 0, points);
    fenêtres.capteur->BtnOK();
    Tape(*OuvreCommande(), 3, 0, points);
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
  Tape(*OuvreCapteur(), 2, 0, "60000");
  Tape(*OuvreCommande(), 2, Command::kPoints, "2000");
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
    autre.ChargeErreur(registre);
    autre.ChargeLeChassis(Crée<linux_::BaseSqlite>(demo.chemin), 1);
    std::string dits;
    for (const std::string& texte : messages.textes) {
      if (texte.find("somme de contrôle") != std::string::npos) dits += texte.substr(0, 27) + ";";
    }
    return dits;
  };
  const auto étalonne = [&](const char* points) {
    Charge(false);
    Tape(*OuvreCapteur(), 2, 0, points);
    fenêtres.capteur->BtnOK();
    Tape(*OuvreCommande(), 2, 1, points);
    fenêtres.commande->BtnOK();
    return ditsAuChargement();
  };
  for (const std::string table : {"Capteur", "Commande"}) {
    Sql("ALTER TABLE " + table + " ADD COLUMN \"Somme de contrôle\" TEXT");
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
  const auto partie =
      linux_::BaseSqlite(demo.chemin)
          .OpenRecordset("SELECT [Index], [Nom affiché], [Somme de contrôle] FROM [Capteur]");
  partie->Edit();
  partie->Ecrit("Nom affiché", std::string("x"));
  partie->Update();
  EXPECT_EQ(Sql("SELECT count(\"Somme de contrôle\") FROM Capteur"), "0|") << "not that of a part";
}

// The record set stands on the row of another object: nothing is written.
TEST_F(UnEtalonnage, RefuseUneLigneQuiABougé) {
  const auto base = Crée<linux_::BaseSqlite>(demo.chemin);
  LeCapteur().LeRecordset(base->OpenRecordset("SELECT * FROM [Capteur]"));
  LaCommande().LeRecordset(base->OpenRecordset("SELECT * FROM [Commande]"));
  const char* const kToutes = "SELECT \"Unité d'Etalonnage\", \"Point 2 - Unité\" FROM Capteur";
  const std::string avant = Sql(kToutes);
  OuvreCapteur()->TxtUnite = "pouces";
  fenêtres.capteur->BtnOK();
  OuvreCommande()->BtnOK();
  EXPECT_EQ(messages.textes, Textes(2, "Error during data backup"));
  EXPECT_FALSE(fenêtres.capteur->Visible() || fenêtres.commande->Visible());
  EXPECT_EQ(Sql(kToutes), avant);
}

TEST_F(UnEtalonnage, ChangeTableEtCapteurDuneCommande) {
  Passe(1);
  OuvreCommande()->Ferme();
  const Ref<Command> feuille = OuvreCommande();
  EXPECT_TRUE(LaCommande().ModeEdition());
  const auto& [labels, choisi] = feuille->CmbCapteurARecopier;
  EXPECT_EQ(labels.size(), static_cast<std::size_t>(chassis->Capteurs()->Count()));
  EXPECT_EQ(labels.at(choisi.value()), "Force");
  EXPECT_EQ(feuille->Cellule({2, Command::kUnités}) + feuille->Cellule({2, Command::kPoints}),
            "1004095");
  EXPECT_EQ(feuille->LblValeurSortie(), AffichageCourt(LaCommande().ValeurCouranteEnPoints()));
  EXPECT_EQ(feuille->LblValeurCapteur(),
            AffichageCourt(LaCommande().CapteurDeRecopie()->ValeurCourante()));
  EXPECT_NE(feuille->LblValeurCapteur(), "0");

  Tape(*feuille, 2, Command::kPoints, "");
  feuille->BtnOK();
  ASSERT_EQ(messages.textes.size(), 1U);
  EXPECT_NE(messages.textes[0].find("Erreur N°94"), std::string::npos);
  EXPECT_NE(messages.textes[0].find("Point 2 - Point"), std::string::npos);
  EXPECT_TRUE(feuille->Visible());

  feuille->ActiveCellule({2, Command::kPoints});
  feuille->Text1("2047,5");
  EXPECT_EQ(OuvreCommande()->Text1(), "2047,5") << "it keeps what is being typed";
  const auto four = std::ranges::find(labels, "Four 1");
  feuille->CmbCapteurARecopier.choisi = static_cast<std::size_t>(four - labels.begin());
  feuille->BtnOK();
  EXPECT_FALSE(feuille->Visible() || LaCommande().ModeEdition());
  EXPECT_EQ(hôte.rafraichie, 1);
  EXPECT_EQ(LaCommande().CapteurDeRecopie()->Label(), "Four 1");
  EXPECT_EQ(LaCommande().PointY(2), 2047.5);
  EXPECT_EQ(Sql(R"(SELECT "Capteur de recopie", "Point 2 - Unité", typeof("Point 2 - Point"),
                "Point 2 - Point" FROM Commande WHERE "Index"=4)"),
            "Four 1|100.0|real|2047.5|");

  FenêtreHôte sansRien;
  OuvreCommande(&sansRien)->CmbCapteurARecopier.choisi.reset();
  EXPECT_EQ(fenêtres.commande->CmbCapteurARecopier.textes.size(), labels.size());
  LeCapteur().Label("");
  fenêtres.commande->BtnOK();
  EXPECT_EQ(LaCommande().CapteurDeRecopie()->Label(), "Four 1") << "no choice leaves the sensor";
  EXPECT_EQ(Sql("SELECT \"Capteur de recopie\" FROM Commande WHERE \"Index\"=4"), "|");
  EXPECT_NE(messages.textes.back().find("Erreur N°438"), std::string::npos);
}

// Command, frame and window of the host go in any order.
TEST_F(UnEtalonnage, SurvitÀCeuxQuIlSert) {
  auto passagère = std::make_unique<Hôte>();
  (void)OuvreCommande(passagère.get());
  passagère.reset();
  Tape(*fenêtres.commande, 2, Command::kPoints, "2000");
  fenêtres.commande->BtnOK();
  EXPECT_EQ(LaCommande().PointY(2), 2000);
  EXPECT_EQ(messages.textes, Textes()) << "what was kept is no failure";
  // A host that loads everything anew, and fails at it.
  struct Recharge : FenêtreHôte {
    void rafraichitTout() override {
      chassis->reset();
      throw Echec(Numéro::BaseVerrouillée);
    }
    std::optional<Chassis>* chassis = nullptr;
  } recharge;
  recharge.chassis = &chassis;
  OuvreCommande(&recharge)->BtnOK();
  EXPECT_NE(messages.textes.at(0).find("Erreur N°3260"), std::string::npos);

  Charge(false);
  (void)OuvreCommande();
  const CommandeRef commande = chassis->Commandes()->Item("4");
  chassis->Commandes()->Remove("4");
  chassis.reset();
  fenêtres.commande->BtnOK();
  EXPECT_FALSE(fenêtres.commande->Visible());
  fenêtres.commande->Timer1();
  commande->EtalonnageExterieur(&hôte);
  EXPECT_TRUE(registre->Contient("EtalonnageExterieur"));

  // A command without channel: its refreshes leave no entries.
  Sql("UPDATE Commande SET Canal=NULL");
  Charge(false);
  (void)OuvreCommande();
  registre->entrées.clear();
  fenêtres.commande->Timer1();
  EXPECT_TRUE(registre->entrées.empty());
  LaCommande().ResetFeuilleEtalonnage();
  EXPECT_FALSE(fenêtres.commande->Visible());
}

}  // namespace
}  // namespace zuma::essai
