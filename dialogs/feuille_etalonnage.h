#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/ref.h"
#include "base/table_etalonnage.h"
#include "platform/base_de_donnees.h"
#include "platform/collaborateurs.h"
#include "platform/fenetres.h"
#include "platform/plateforme.h"

namespace zuma {

class Objet;

/// What the calibration forms of sensors and commands share: the grid of up to 20 points, the box
/// in which one cell is edited, the captions, the owner. No toolkit here: a window paints what is
/// public, hands over what was typed, calls `Timer1` every `kPériode` and goes away when `Visible`
/// turns false. The window holds a reference to the form for as long as it stands and while it
/// calls it: what a call reaches, a message or a listener, may take object, frame and window away.
class FeuilleEtalonnage : public FeuilleTenue {
 public:
  static constexpr double kPériode = 0.2;  ///< seconds between two refreshes of the live values
  static constexpr int kRangées = TableEtalonnage::kMaxPoints + 1;  ///< row 0 is the header
  /// Columns of the grid.
  static constexpr int kColonnes = 2;

  /// What the editor does with a key.
  enum class Suite : std::uint8_t {
    Passe,  ///< the box takes the character
    Mangée  ///< dropped, or already carried out
  };
  /// Place of a cell.
  struct Case {
    int rangée = 1;   ///< 1 to 20
    int colonne = 0;  ///< 0 or 1
    /// The same cell.
    friend bool operator==(Case, Case) = default;
  };

  FeuilleEtalonnage(const FeuilleEtalonnage&) = delete;
  FeuilleEtalonnage& operator=(const FeuilleEtalonnage&) = delete;
  ~FeuilleEtalonnage() override = default;

  /// Without a translator captions stay as they are.
  void Traducteur(Ref<ZED_Traduction> traducteur) { traducteur_ = std::move(traducteur); }
  /// False once the form is to leave the screen.
  [[nodiscard]] bool Visible() const noexcept { return visible_; }
  /// The window that owns the form; null for none, and once it is gone.
  [[nodiscard]] FenêtreHôte* Propriétaire() const noexcept { return propriétaire_.lock().get(); }
  /// Title of the window: the name of the object.
  [[nodiscard]] const std::string& Titre() const noexcept { return titre_; }
  /// Internal name of the object, read only.
  [[nodiscard]] const std::string& Lbl_Nom_Interne_Cpt() const noexcept { return nom_; }
  /// Read only: the forms neither edit nor write it.
  [[nodiscard]] const std::string& CommentaireEtalonnage() const noexcept { return commentaire_; }
  /// Caption of an element by the words that it bears in the form, which are its key.
  [[nodiscard]] std::string Légende(std::string_view clé) const;

  /// `GrilleEtalonnage`: row 0 the captions of the columns, rows 1 to 20 the points, as typed.
  [[nodiscard]] const std::string& Cellule(Case où) const;
  /// False for a cell that could not be saved: it holds no number. A window marks it.
  [[nodiscard]] bool CelluleLisible(Case où) const;
  /// Last row that the table uses as it is typed now, 0 for none. A window marks those behind it.
  [[nodiscard]] int DernièreRangée() const;
  /// True while the last row is empty, so that none is lost by an insertion.
  [[nodiscard]] bool PeutInsérer() const;
  /// Puts an empty row in the place of `rangée`, 1 to 20; it and those behind it go down. Does
  /// nothing unless `PeutInsérer`.
  void InsèreRangée(int rangée);
  /// Takes row `rangée` away; those behind it come up, and the last one is empty.
  void SupprimeRangée(int rangée);
  /// The live value as the table that is being typed gives it; "?" while it gives none.
  [[nodiscard]] const std::string& LblValeurSaisie() const noexcept { return valeurSaisie_; }

  /// Puts `Text1` over a cell, with its text. What stood in it before goes to its own cell.
  void ActiveCellule(Case où);
  /// The cell being edited; none while `Text1` is hidden.
  [[nodiscard]] std::optional<Case> Text1Sur() const noexcept { return text1Sur_; }
  ///@{
  /// The box: what it holds now.
  [[nodiscard]] const std::string& Text1() const noexcept { return text1_; }
  void Text1(std::string texte) { text1_ = std::move(texte); }
  ///@}
  /// A key in `Text1`: digits, ".", ",", "+", "-" and backspace pass; Enter (13) keeps the text,
  /// Escape (27) leaves the cell as it was, both hide the box; any other key is dropped.
  Suite Text1_KeyPress(char32_t code);
  /// The box lost the focus: its text goes to the cell.
  void Text1_LostFocus();

  /// Shows the live values.
  virtual void Timer1() = 0;
  /// Keeps what was typed: the row in one transaction, then the object. See the derived forms.
  virtual void BtnOK() = 0;
  /// Leaves without keeping anything.
  virtual void BtnCancel() = 0;
  /// The window was closed without a button: the form stays with its object and serves again.
  void Ferme() noexcept;

 protected:
  /// What tells the two forms apart.
  struct Modèle {
    std::string_view légende;                         ///< default of the captions
    std::array<std::string_view, kColonnes> entêtes;  ///< captions of the columns
    int unités;  ///< column of the units; the other one holds the points
  };
  /// One row of the table.
  struct Point {
    double unités = 0;  ///< in units of the object
    double points = 0;  ///< in points of the channel
    /// Equal to the last digit.
    friend bool operator==(const Point&, const Point&) = default;
  };
  /// Rows 1 to 20 of the table.
  using Points = std::array<Point, TableEtalonnage::kMaxPoints>;

  /// An empty form of that model, not shown.
  explicit FeuilleEtalonnage(const Modèle& modèle) : modèle_(modèle) {}

  /// Shows the form, owned by `mère`: the owner before is kept, and put back at the end.
  /// A window that cannot be made leaves the form closed, and its failure goes to the caller.
  void Ouvre(FenêtreHôte* mère, const std::function<void()>& montre);
  /// Fills names, comment and grid from the object that is calibrated.
  template <class Etalonné>
  void Remplit(const Etalonné& objet, const std::string& nom) {
    titre_ = nom_ = nom;
    commentaire_ = objet.CommentaireEtalonnage();
    Points points;
    for (int i = 0; i < TableEtalonnage::kMaxPoints; ++i) {
      const auto rangée = static_cast<std::int16_t>(i + 1);
      points[static_cast<std::size_t>(i)] = {objet.PointX(rangée), objet.PointY(rangée)};
    }
    RemplitLaGrille(points);
  }
  /// True when one of these points is not what the form was filled with.
  [[nodiscard]] bool OntChangé(const Points& points) const { return points != remplis_; }
  /// The numbers of the grid; what was not typed keeps all its digits. A cell that holds none fails
  /// with 94 when it is empty, with 13 otherwise: a record that held Null could not be loaded
  /// again.
  [[nodiscard]] Points PointsSaisis() const;
  /// Goes to the first row of the object's record. False, after a message and with the form closed,
  /// when that row is not the object's.
  [[nodiscard]] bool TrouveLaLigne(const Objet& objet, Recordset& ligne);
  /// Writes what changed of each point, in the form that `enValeur` gives the number.
  void EcritLesPoints(Recordset& ligne, const Points& points, Valeur (*enValeur)(double)) const;
  /// Saves the row, with person and date of a new table where the installation names the person;
  /// these then go to the object.
  template <class Etalonné>
  static void Sauve(Etalonné& objet, Recordset& ligne, bool nouvelleTable) {
    const RéglagesEtalonnage& réglages = objet.LaPlateforme().réglages.étalonnage;
    const bool signée = nouvelleTable && !réglages.personne.empty();
    const bool datée = signée && réglages.date != nullptr;
    const std::string date = datée ? réglages.date() : std::string();
    if (signée) ligne.Ecrit("Nom de l'Etalonneur", réglages.personne);
    if (datée) ligne.Ecrit("Date d'Etalonnage", date);
    ligne.Update();
    if (signée) objet.NomEtalonneur(réglages.personne);
    if (datée) objet.DateEtalonnage(date);
  }
  /// Works out `LblValeurSaisie` of `entrée`, by the direction `vers` of the table.
  void AfficheSousLaTableSaisie(double entrée, double (TableEtalonnage::*vers)(double) const);
  /// Hands the points to the object, row by row.
  template <class Etalonné>
  static void PorteLesPoints(Etalonné& objet, const Points& points) {
    for (std::int16_t rangée = 1; rangée < kRangées; ++rangée) {
      const Point& point = points[static_cast<std::size_t>(rangée - 1)];
      objet.PointX(rangée, point.unités);
      objet.PointY(rangée, point.points);
    }
  }

 private:
  struct Cellules {
    std::string texte;
    std::optional<double> exact;  // what the text was made from; none once it is typed
  };
  [[nodiscard]] static std::size_t Rang(Case où);
  void RemplitLaGrille(const Points& points);
  void Déplace(int première, int dernière, int pas);
  [[nodiscard]] std::optional<double> NombreSaisi(int rangée, bool unités) const;
  [[nodiscard]] std::pair<TableEtalonnage, bool> TableSaisie() const;

  const Modèle& modèle_;
  Ref<ZED_Traduction> traducteur_;
  bool visible_ = false;
  std::weak_ptr<FenêtreHôte> propriétaire_;
  std::weak_ptr<FenêtreHôte> propriétairePrécédent_;
  std::string titre_;
  std::string nom_;
  std::string commentaire_;
  std::string valeurSaisie_;
  std::array<Cellules, std::size_t{kRangées} * kColonnes> cellules_;
  Points remplis_;
  std::optional<Case> text1Sur_;
  std::string text1_;
};

}  // namespace zuma
