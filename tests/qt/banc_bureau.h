#pragma once

#include <optional>

#include "core/recherche.h"
#include "host/desktop/bureau.h"
#include "qt/banc_qt.h"
#include "sim/machine_simulee.h"

// The desktop window on the simulated press, and an operator in front of it.
namespace zuma::essai {

using Colonne = host::TableCapteurs::Colonne;

class UnBureau : public testing::Test {
 protected:
  // Frame 1 of a demo base of its own, changed by `sql`, in its window.
  void Ouvre(const std::string& sql = {}, const std::string& langue = "en") {
    bureau.reset();
    base.emplace().Exécute(sql.c_str());
    options.paramètres.clear();
    for (const auto& [index, valeur] : linux_::ParamètresDeDémonstration()) {
      options.paramètres.push_back(std::to_string(index) + "=" + valeur);
    }
    options.fichier = base->chemin;
    options.simulation = true;
    options.langue = langue;
    bureau.emplace(options);
    bureau->Fenêtre().show();
    bureau->LeBattement().Démarre();
    Laisse(300);
  }
  // The same of a frame that is not sound: the operator wants it all the same.
  void OuvreMalgréTout(const std::string& sql) {
    options.malgréTout = true;
    Ensuite([] { essai::Clique(FenêtreAvec("lance"), "lance"); });
    Ouvre(sql);
  }
  static void Laisse(int millisecondes) { QTest::qWait(millisecondes); }
  template <class T>
  T& Le(const char* nom) {
    T* widget = bureau->Fenêtre().findChild<T*>(nom);
    if (widget == nullptr) throw std::runtime_error(nom);
    return *widget;
  }
  template <class T>
  void Clique(const char* nom) {
    QTest::mouseClick(&Le<T>(nom), Qt::LeftButton, {}, {8, Le<T>(nom).height() / 2});
  }
  void Tape(const char* nom, const char* texte) {
    Clique<QLineEdit>(nom);
    QTest::keyClick(&Le<QLineEdit>(nom), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&Le<QLineEdit>(nom), texte);
  }
  Chassis& LeChassis() { return bureau->LaMarche().LeChassis(); }
  sim::Borne Borne(const CanalRef& canal) {
    return *bureau->LaMachine().Jumelle()->BorneDe(*canal);
  }
  double Volts(const CanalRef& entrée) {
    const sim::Borne borne = Borne(entrée);
    return borne.DeLaCarte().entréesAnalogiques[borne.Ligne()];
  }
  double Volts(const char* commande) {
    return Borne(LeChassis().Commandes()->Item(commande)->Canal()).TensionSortie();
  }
  bool Ligne(const char* sortie) {
    return Borne(LeChassis().SortiesLogiques()->Item(sortie)->Canal()).SortieLogique();
  }
  CapteurRef LeCapteur(const char* label) { return recherche::CapteurDeLabel(LeChassis(), label); }
  // Row of a sensor, chosen.
  int Choisit(const Capteur& capteur) {
    auto& vue = Le<QAbstractItemView>("tableCapteurs");
    for (int rang = 0; rang < vue.model()->rowCount(); ++rang) {
      if (Case(rang, Colonne::Nom) != QString::fromStdString(capteur.NomDuCapteur())) continue;
      vue.setCurrentIndex(vue.model()->index(rang, 0));
      return rang;
    }
    return -1;
  }
  QString Case(int rang, int colonne) {
    QAbstractItemModel& table = *Le<QAbstractItemView>("tableCapteurs").model();
    return table.data(table.index(rang, colonne)).toString();
  }

  std::optional<BaseDeDémo> base;
  host::OptionsDesktop options;
  std::optional<host::Bureau> bureau;
};

}  // namespace zuma::essai
