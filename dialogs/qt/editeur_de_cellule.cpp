#include "dialogs/qt/editeur_de_cellule.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QValidator>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace zuma::qt {
namespace {

using Départ = EditeurDeCellule::Départ;

constexpr char32_t kEntrée = 13;
constexpr char32_t kEchappement = 27;
constexpr char32_t kRetourArrière = 8;
constexpr char32_t kPremierImprimable = 32;

// What the form gets to know of a key: the code of its character. Keys without one (arrows, the
// clipboard's) are the box's own.
std::optional<char32_t> Code(const QKeyEvent& touche) {
  constexpr std::array<std::pair<int, char32_t>, 4> kSpéciales{
      {{Qt::Key_Return, kEntrée},
       {Qt::Key_Enter, kEntrée},
       {Qt::Key_Escape, kEchappement},
       {Qt::Key_Backspace, kRetourArrière}}};
  for (const auto& [clé, code] : kSpéciales) {
    if (touche.key() == clé) return code;
  }
  const bool raccourci = (touche.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) ==
                         Qt::KeyboardModifiers(Qt::ControlModifier);
  if (raccourci || touche.text().isEmpty() || !touche.text().front().isPrint()) return {};
  return touche.text().front().unicode();
}

/// Lets what did not come from the keyboard (clipboard, dragging, input methods) through by the
/// same rule as a key. Words and blanks around a number are dropped; a text in which something
/// stands between two accepted characters is refused whole: "1e5" must not become 15, nor two
/// cells one number.
class Filtre final : public QValidator {
 public:
  Filtre(FeuilleEtalonnage& feuille, QObject* parent) : QValidator(parent), feuille_(feuille) {}

  void Part(const QString& texte) { avant_ = texte; }

  State validate(QString& texte, int& curseur) const override {
    const qsizetype commune = std::min(avant_.size(), texte.size());
    qsizetype tête = 0;
    while (tête < commune && avant_[tête] == std::as_const(texte)[tête]) ++tête;
    qsizetype queue = 0;
    while (queue < commune - tête &&
           avant_[avant_.size() - 1 - queue] == std::as_const(texte)[texte.size() - 1 - queue]) {
      ++queue;
    }
    const QString inséré = texte.mid(tête, texte.size() - tête - queue);
    const std::optional<QString> admis = Admis(inséré);
    if (!admis) return Invalid;
    if (*admis != inséré) {
      texte.replace(tête, inséré.size(), *admis);
      curseur = static_cast<int>(tête + admis->size());
    }
    avant_ = texte;
    return Acceptable;
  }

 private:
  [[nodiscard]] bool Passe(QChar c) const {
    return c.unicode() >= kPremierImprimable &&
           feuille_.Text1_KeyPress(c.unicode()) == FeuilleEtalonnage::Suite::Passe;
  }
  // The one number of `texte`; none when it holds none or something inside it.
  [[nodiscard]] std::optional<QString> Admis(const QString& texte) const {
    const auto passe = [&](QChar c) { return Passe(c); };
    const auto premier = std::find_if(texte.begin(), texte.end(), passe);
    if (premier == texte.end()) return texte.isEmpty() ? std::optional(texte) : std::nullopt;
    const auto dernier = std::find_if(texte.rbegin(), texte.rend(), passe).base();
    if (!std::all_of(premier, dernier, passe)) return {};
    return QString(premier, dernier - premier);
  }

  FeuilleEtalonnage& feuille_;
  mutable QString avant_;
};

}  // namespace

EditeurDeCellule::EditeurDeCellule(Ref<FeuilleEtalonnage> feuille, QWidget* parent,
                                   std::function<void(Départ)> départ)
    : QLineEdit(parent), feuille_(std::move(feuille)), départ_(std::move(départ)) {
  setObjectName("Text1");
  setAlignment(Qt::AlignCenter);
  setFrame(false);
  setValidator(new Filtre(*feuille_, this));
  connect(this, &QLineEdit::textChanged, this,
          [this](const QString& texte) { feuille_->Text1(texte.toStdString()); });
  hide();
}

void EditeurDeCellule::Reprend() {
  const QString texte = QString::fromStdString(feuille_->Text1());
  // Not through the filter: a number written with an exponent stays what it is.
  static_cast<Filtre*>(const_cast<QValidator*>(validator()))->Part(texte);
  setText(texte);
  selectAll();
}

void EditeurDeCellule::keyPressEvent(QKeyEvent* événement) {
  if (événement->key() == Qt::Key_Up) return départ_(Départ::Haut);
  if (événement->key() == Qt::Key_Down) return départ_(Départ::Bas);
  const std::optional<char32_t> code = Code(*événement);
  const bool passe = !code || feuille_->Text1_KeyPress(*code) == FeuilleEtalonnage::Suite::Passe;
  événement->accept();
  if (passe) return QLineEdit::keyPressEvent(événement);
  if (code == kEntrée) départ_(Départ::Entrée);
  if (code == kEchappement) départ_(Départ::Echappement);
}

// A context menu, or another program in front, does not end the editing.
void EditeurDeCellule::focusOutEvent(QFocusEvent* événement) {
  QLineEdit::focusOutEvent(événement);
  const Qt::FocusReason raison = événement->reason();
  if (raison == Qt::PopupFocusReason || raison == Qt::ActiveWindowFocusReason) return;
  départ_(Départ::Perdu);
}

bool EditeurDeCellule::focusNextPrevChild(bool suivante) {
  if (!isVisible()) return QLineEdit::focusNextPrevChild(suivante);
  départ_(suivante ? Départ::Suivante : Départ::Précédente);
  return true;
}

}  // namespace zuma::qt
