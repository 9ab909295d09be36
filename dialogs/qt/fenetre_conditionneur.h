#pragma once

#include <QLabel>
#include <array>

#include "dialogs/feuille_conditionneur_numerique.h"
#include "dialogs/qt/fenetre_de_feuille.h"

class QBoxLayout;
class QGroupBox;
class QPushButton;

namespace zuma::qt {

/// Window of the maintenance form of the digital conditioners, which outlives it.
class FenêtreConditionneur final : public FenêtreDeFeuille {
 public:
  /// A window of that form.
  FenêtreConditionneur(FeuilleConditionneurNumerique& feuille, const Mots& mots);

  /// True while the window serves that form.
  [[nodiscard]] bool Sert(const FeuilleConditionneurNumerique& feuille) const {
    return !Partie() && &feuille == &feuille_;
  }

 protected:
  void Relit() override;
  void AfficheLesValeurs(bool sûres) override;

 private:
  using Element = FeuilleConditionneurNumerique::Element;
  static constexpr std::size_t kDrapeaux = std::tuple_size_v<ConditionneurAffiché::Drapeaux>;
  static constexpr std::size_t kValeurs = ConditionneurAffiché::kNombreDeValeurs;

  /// A disc beside words.
  struct Témoin {
    QLabel* disque = nullptr;
    QLabel* texte = nullptr;
  };
  enum class Etat : std::uint8_t { Eteint, Bon, Mauvais };

  [[nodiscard]] QString Texte(Element élément) const { return EnQt(feuille_.Texte(élément)); }
  [[nodiscard]] QGroupBox* Communication();
  [[nodiscard]] QGroupBox* Module();
  [[nodiscard]] QGroupBox* Valeurs();
  [[nodiscard]] QLayout* Boutons();
  [[nodiscard]] Témoin Ajoute(QBoxLayout& où, const char* nom);
  static void Montre(const Témoin& témoin, Etat état, const QString& texte);

  FeuilleConditionneurNumerique& feuille_;
  std::array<QGroupBox*, 3> cadres_{};
  std::array<QLabel*, 3> légendes_{};  ///< port settings, port found, module details
  std::array<QPushButton*, 3> boutons_{};
  QLabel* com_ = nullptr;
  Témoin lampe_;
  std::array<Témoin, kDrapeaux> drapeaux_;
  std::array<QLabel*, kValeurs> noms_{};
  std::array<QLabel*, kValeurs> valeurs_{};
};

}  // namespace zuma::qt
