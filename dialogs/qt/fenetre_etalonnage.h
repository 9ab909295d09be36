#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <vector>

#include "dialogs/feuille_etalonnage.h"
#include "dialogs/qt/fenetre_de_feuille.h"
#include "dialogs/qt/grille_etalonnage.h"

namespace zuma::qt {

/// What the windows of the two calibration forms share: name, grid with its editor, live values,
/// comment, OK and Cancel. A derived window adds its fields in its constructor.
class FenêtreEtalonnage : public FenêtreDeFeuille {
 public:
  /// True while the window serves that form.
  [[nodiscard]] bool Sert(const FeuilleEtalonnage& feuille) const {
    return !Partie() && &feuille == feuille_.Brut();
  }

 protected:
  /// Name, grid and comment of `feuille`; the derived window adds its own.
  FenêtreEtalonnage(const Ref<FeuilleEtalonnage>& feuille, const Mots& mots, const Refus& refus);

  void Relit() override;

  /// Caption of an element, by the words that it bears in the form.
  [[nodiscard]] QString Légende(std::string_view clé) const { return EnQt(feuille_->Légende(clé)); }
  /// Adds a field under the name, with its caption.
  void AjouteChamp(const char* nomDeLégende, std::string_view clé, QWidget* champ);
  /// Adds a live value beside the grid, with its caption, and gives the label that shows it.
  QLabel* AjouteValeur(const char* nomDeLégende, std::string_view clé, const char* nom);
  /// Adds an element of any other kind under the live values.
  void AjouteSousLesValeurs(QWidget* élément) { valeurs_->addWidget(élément); }
  /// Sets the way of the Tab key once all is there: these fields, the grid, what stands under the
  /// live values, then the rest.
  void Enchaîne(std::vector<QWidget*> champs, const std::vector<QWidget*>& sousLesValeurs);
  /// Shows a live value; one that is not known as a question mark.
  static void Affiche(QLabel& où, const std::string& valeur, bool sûre);

 private:
  [[nodiscard]] QLayout* Milieu();
  [[nodiscard]] QLayout* Boutons();

  Ref<FeuilleEtalonnage> feuille_;
  QLabel* nom_;
  QFormLayout* champs_;
  QVBoxLayout* valeurs_;
  GrilleEtalonnage* grille_;
  QPlainTextEdit* commentaire_;
  std::vector<QWidget*> boutons_;
};

}  // namespace zuma::qt
