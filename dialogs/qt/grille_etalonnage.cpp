#include "dialogs/qt/grille_etalonnage.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "dialogs/qt/points_de_feuille.h"

namespace zuma::qt {
namespace {

constexpr int kRangéesSouhaitées = 12;
constexpr int kRangéesAuMoins = 5;
constexpr int kCaractèresParColonne = 14;

bool EstUneFrappe(const QKeyEvent& touche) {
  const bool raccourci =
      touche.modifiers().testAnyFlags(Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  const bool efface = touche.key() == Qt::Key_Backspace || touche.key() == Qt::Key_Delete;
  const bool imprime = !touche.text().isEmpty() && touche.text().front().isPrint();
  return (!raccourci && (efface || imprime)) || touche.matches(QKeySequence::Paste);
}

bool Ouvre(const QKeyEvent& touche) {
  return touche.key() == Qt::Key_F2 || touche.key() == Qt::Key_Return ||
         touche.key() == Qt::Key_Enter;
}

}  // namespace

GrilleEtalonnage::GrilleEtalonnage(const Ref<FeuilleEtalonnage>& feuille, const Mots& mots,
                                   QWidget* parent)
    : QTableView(parent),
      feuille_(feuille),
      éditeur_(new EditeurDeCellule(feuille, viewport(),
                                    [this](EditeurDeCellule::Départ d) { Départ(d); })) {
  setObjectName("GrilleEtalonnage");
  setModel(new PointsDeFeuille(feuille, mots, this));
  setEditTriggers(NoEditTriggers);  // the editor is the form's, not the view's
  setSelectionMode(SingleSelection);
  setTabKeyNavigation(false);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  horizontalHeader()->setSectionsClickable(false);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(éditeur_->sizeHint().height());
  verticalHeader()->setSectionsClickable(false);
  connect(this, &QTableView::clicked, this, [this](const QModelIndex& où) { Active(où); });
  insère_ = Action("InsereRangee", mots("Geste insere rangee", "&Insert row"), "Ctrl+Ins",
                   &FeuilleEtalonnage::InsèreRangée);
  (void)Action("SupprimeRangee", mots("Geste supprime rangee", "&Delete row"), "Ctrl+Del",
               &FeuilleEtalonnage::SupprimeRangée);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  setCurrentIndex(model()->index(0, 0));
}

QAction* GrilleEtalonnage::Action(const char* nom, const QString& texte, const char* touches,
                                  void (FeuilleEtalonnage::*fais)(int)) {
  auto* const action = new QAction(texte, this);
  action->setObjectName(nom);
  action->setShortcut(QKeySequence(touches));
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(action, &QAction::triggered, this, [this, fais] {
    if (!currentIndex().isValid()) return;
    (*feuille_.*fais)(currentIndex().row() + 1);
    Relit();
  });
  addAction(action);
  return action;
}

// The box tells this grid when it loses the focus: it goes first.
GrilleEtalonnage::~GrilleEtalonnage() {
  delete éditeur_;
}

QSize GrilleEtalonnage::TailleDe(int rangées) const {
  const int colonne = fontMetrics().averageCharWidth() * kCaractèresParColonne;
  const int bord = 2 * frameWidth();
  return {verticalHeader()->sizeHint().width() + FeuilleEtalonnage::kColonnes * colonne +
              verticalScrollBar()->sizeHint().width() + bord,
          horizontalHeader()->sizeHint().height() +
              rangées * verticalHeader()->defaultSectionSize() + bord};
}

QSize GrilleEtalonnage::sizeHint() const {
  return TailleDe(kRangéesSouhaitées);
}

QSize GrilleEtalonnage::minimumSizeHint() const {
  return TailleDe(kRangéesAuMoins);
}

// The focus leaves the box before it is hidden: a hidden one would send it to the next cell.
void GrilleEtalonnage::Relit() {
  static_cast<PointsDeFeuille*>(model())->Relit();
  insère_->setEnabled(feuille_->PeutInsérer());
  if (feuille_->Text1Sur()) {
    Place();
    return;
  }
  if (éditeur_->hasFocus()) setFocus();
  éditeur_->hide();
}

void GrilleEtalonnage::Active(const QModelIndex& où) {
  if (!où.isValid()) return;
  feuille_->ActiveCellule(CaseDe(où));
  setCurrentIndex(où);
  scrollTo(où);
  éditeur_->Reprend();
  éditeur_->show();
  éditeur_->raise();
  éditeur_->setFocus();
  Relit();
}

void GrilleEtalonnage::Départ(EditeurDeCellule::Départ départ) {
  using D = EditeurDeCellule::Départ;
  feuille_->Text1_LostFocus();  // keeps the text, unless a key has ended the editing before
  Relit();
  if (départ == D::Entrée || départ == D::Bas) Descend(1);
  if (départ == D::Haut) Descend(-1);
  if (départ != D::Suivante && départ != D::Précédente) return;
  const bool suivante = départ == D::Suivante;
  const QModelIndex voisine = Voisine(suivante ? 1 : -1);
  if (voisine.isValid()) {
    Active(voisine);
  } else {
    (void)QTableView::focusNextPrevChild(suivante);
  }
}

QModelIndex GrilleEtalonnage::Voisine(int pas) const {
  const QModelIndex ici = currentIndex();
  const int rang = ici.row() * FeuilleEtalonnage::kColonnes + ici.column() + pas;
  if (!ici.isValid() || rang < 0) return {};
  return model()->index(rang / FeuilleEtalonnage::kColonnes, rang % FeuilleEtalonnage::kColonnes);
}

void GrilleEtalonnage::Descend(int rangées) {
  const QModelIndex là = currentIndex().siblingAtRow(currentIndex().row() + rangées);
  if (là.isValid()) setCurrentIndex(là);
}

void GrilleEtalonnage::keyPressEvent(QKeyEvent* événement) {
  if (Ouvre(*événement)) return Active(currentIndex());
  if (!EstUneFrappe(*événement)) return QTableView::keyPressEvent(événement);
  Active(currentIndex());
  QCoreApplication::sendEvent(éditeur_, événement);
}

bool GrilleEtalonnage::focusNextPrevChild(bool suivante) {
  const QModelIndex voisine = Voisine(suivante ? 1 : -1);
  if (!voisine.isValid()) return QTableView::focusNextPrevChild(suivante);
  setCurrentIndex(voisine);
  return true;
}

void GrilleEtalonnage::Place() {
  const auto où = feuille_->Text1Sur();
  if (où) éditeur_->setGeometry(visualRect(model()->index(où->rangée - 1, où->colonne)));
}

void GrilleEtalonnage::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  Place();
}

void GrilleEtalonnage::updateEditorGeometries() {
  QTableView::updateEditorGeometries();
  Place();
}

}  // namespace zuma::qt
