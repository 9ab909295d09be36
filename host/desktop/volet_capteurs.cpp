#include "host/desktop/volet_capteurs.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <array>

namespace zuma::host {

// An act on the chosen sensor, its key, whether it changes what is read, and whether that sensor
// allows it.
struct VoletCapteurs::Geste {
  const char* nom;
  std::string_view clé;
  QKeySequence touche;
  bool change;
  bool (*permis)(const Capteur&);
  void (*fait)(VoletCapteurs&, Capteur&);

  static const std::array<Geste, 6> kGestes;
};

const std::array<VoletCapteurs::Geste, 6> VoletCapteurs::Geste::kGestes{{
    {"gesteTare", "Geste tare", Qt::Key_T, true, [](const Capteur&) { return true; },
     [](VoletCapteurs&, Capteur& c) { c.Tare(); }},
    {"gesteAnnuleTare", "Geste annule tare", Qt::Key_C, true,
     [](const Capteur& c) { return c.EtatDeLaTare(); },
     [](VoletCapteurs&, Capteur& c) { c.AnnuleTare(); }},
    {"gesteZero", "Geste zero", Qt::Key_Z, true,
     [](const Capteur& c) { return c.RazAutorise_bln(); },
     [](VoletCapteurs&, Capteur& c) { c.Raz(); }},
    {"gesteExtremes", "Geste extremes", Qt::Key_M, false, [](const Capteur&) { return true; },
     [](VoletCapteurs&, Capteur& c) { c.RazMaxiDétecté(); }},
    {"gesteEtalonne", "Geste etalonne", Qt::Key_E, true,
     [](const Capteur& c) { return c.EtalonnageExterieurPossible(); },
     [](VoletCapteurs& v, Capteur& c) { c.EtalonnageExterieur(&v.mère_); }},
    {"gesteCourbe", "Geste courbe", Qt::Key_Space, false, [](const Capteur&) { return true; },
     [](VoletCapteurs& v, Capteur&) { v.table_.BasculeLaCourbe(v.vue_.currentIndex()); }},
}};

VoletCapteurs::VoletCapteurs(Chassis& chassis, const Textes& textes, CourbesChoisies& courbes,
                             Verrou verrou, FenêtreHôte& mère)
    : textes_(textes), verrou_(std::move(verrou)), mère_(mère), table_(chassis, textes, courbes) {
  setObjectName("voletCapteurs");
  vue_.setObjectName("tableCapteurs");
  vue_.setAccessibleName(textes("Titre capteurs"));
  vue_.setModel(&table_);
  vue_.setSelectionBehavior(QAbstractItemView::SelectRows);
  vue_.setSelectionMode(QAbstractItemView::SingleSelection);
  vue_.setEditTriggers(QAbstractItemView::NoEditTriggers);
  vue_.setTabKeyNavigation(false);
  vue_.setAlternatingRowColors(true);
  vue_.setWordWrap(false);
  vue_.verticalHeader()->hide();
  vue_.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  vue_.horizontalHeader()->setHighlightSections(false);
  vue_.horizontalHeader()->setStretchLastSection(true);
  vue_.setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* boîte = new QVBoxLayout(this);
  boîte->setContentsMargins(0, 0, 0, 0);
  boîte->addWidget(&vue_);
  setFocusProxy(&vue_);
  AjouteLesGestes();
  connect(&vue_, &QTableView::doubleClicked, this, [this] { Ouvre(); });
  connect(vue_.selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this] { MetLesGestesAJour(); });
  vue_.selectRow(0);
  AjusteLesColonnes();
}

void VoletCapteurs::Rafraîchit() {
  table_.Rafraîchit();
  MetLesGestesAJour();
}

void VoletCapteurs::AjouteLesGestes() {
  for (const Geste& geste : Geste::kGestes) {
    auto* action = new QAction(textes_(geste.clé), &vue_);
    action->setObjectName(geste.nom);
    action->setShortcut(geste.touche);
    action->setShortcutContext(Qt::WidgetShortcut);
    // What is allowed may have changed since the menu was opened.
    connect(action, &QAction::triggered, this, [this, &geste] {
      Capteur* capteur = Choisi();
      if (!EstPermis(geste, capteur)) return;
      geste.fait(*this, *capteur);
      Rafraîchit();
    });
    vue_.addAction(action);
    gestes_.push_back(action);
  }
  for (const Qt::Key touche : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* ouvre = new QShortcut(touche, &vue_);
    ouvre->setContext(Qt::WidgetShortcut);
    connect(ouvre, &QShortcut::activated, this, [this] { Ouvre(); });
  }
}

bool VoletCapteurs::EstPermis(const Geste& geste, const Capteur* capteur) const {
  return capteur != nullptr && !(geste.change && verrou_()) && geste.permis(*capteur);
}

void VoletCapteurs::MetLesGestesAJour() {
  const Capteur* capteur = Choisi();
  for (std::size_t i = 0; i < gestes_.size(); ++i) {
    gestes_[i]->setEnabled(EstPermis(Geste::kGestes[i], capteur));
  }
}

// A calibration where the operator may calibrate, else the curve.
void VoletCapteurs::Ouvre() {
  Capteur* capteur = Choisi();
  if (capteur == nullptr) return;
  if (capteur->EtalonnageExterieurPossible()) {
    if (!verrou_()) capteur->EtalonnageExterieur(&mère_);
  } else {
    table_.BasculeLaCourbe(vue_.currentIndex());
  }
}

void VoletCapteurs::RemplitLeMenu(QMenu& menu) {
  menu.addActions({gestes_.begin(), gestes_.end()});
  connect(&menu, &QMenu::aboutToShow, this, [this] { MetLesGestesAJour(); });
}

// Later: the font has not come to the table yet.
void VoletCapteurs::changeEvent(QEvent* changement) {
  QWidget::changeEvent(changement);
  if (changement->type() == QEvent::FontChange) {
    QTimer::singleShot(0, this, [this] { AjusteLesColonnes(); });
  }
}

// Room for a sign and the widest number that the limits let come.
void VoletCapteurs::AjusteLesColonnes() {
  vue_.resizeColumnsToContents();
  const int chiffre = vue_.fontMetrics().horizontalAdvance('0');
  const std::array<std::pair<int, int>, 6> largeurs{{{TableCapteurs::Valeur, 14},
                                                     {TableCapteurs::Points, 9},
                                                     {TableCapteurs::Etat, 16},
                                                     {TableCapteurs::Marques, 16},
                                                     {TableCapteurs::Mini, 10},
                                                     {TableCapteurs::Maxi, 10}}};
  for (const auto& [colonne, chiffres] : largeurs) {
    vue_.setColumnWidth(colonne, std::max(vue_.columnWidth(colonne), chiffres * chiffre));
  }
  vue_.verticalHeader()->setDefaultSectionSize(vue_.fontMetrics().height() * 3 / 2);
}

}  // namespace zuma::host
