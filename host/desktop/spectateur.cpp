#include "host/desktop/spectateur.h"

#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "host/desktop/graphique.h"
#include "host/regard/choix.h"
#include "host/regard/textes.h"

namespace zuma::host {
namespace {

constexpr std::chrono::milliseconds kTour{200};
constexpr std::size_t kCourbesAuDépart = 2;
constexpr std::size_t kCourbesAuPlus = 16;
constexpr double kPlancher = 1e-3;  // of an object's limits
constexpr double kSilence = 1;      // seconds without a sample of a host that is well

std::optional<double> Lecture(const publication::Mesure& mesure) {
  return std::isfinite(mesure.valeur) ? std::optional(mesure.valeur) : std::nullopt;
}

double Echelle(const publication::ObjetPublié& objet) {
  return std::max(std::abs(objet.mini.value_or(0)), std::abs(objet.maxi.value_or(0)));
}

}  // namespace

Spectateur::Spectateur(std::string fichier, const Textes& textes)
    : fichier_(std::move(fichier)),
      textes_(textes),
      lecteur_(fichier_),
      rangs_(ObjetsDAbord(lecteur_.LeChassis())),
      bandeau_(new QLabel(this)),
      table_(NouvelleTable()),
      graphique_(new Graphique(textes, this)) {
  setObjectName("spectateur");
  bandeau_->setObjectName("bandeauSpectateur");
  bandeau_->setWordWrap(true);
  bandeau_->setAutoFillBackground(true);
  setWindowTitle(EnQt(lecteur_.LeChassis().nom) + " - zuma - " + textes("Titre spectateur"));
  graphique_->Abscisse(textes("Axe temps"), -kEtendue, 7);
  auto* milieu = new QSplitter(this);
  milieu->addWidget(table_);
  milieu->addWidget(graphique_);
  milieu->setSizes({kTaille.width() / 2, kTaille.width() / 2});
  auto* centre = new QWidget(this);
  auto* boîte = new QVBoxLayout(centre);
  boîte->addWidget(bandeau_);
  boîte->addWidget(milieu, 1);
  setCentralWidget(centre);
  resize(kTaille.boundedTo(screen()->availableSize()));
  suivant_ = lecteur_.Premier();
  CommenceLesTraces();
  connect(&rafraîchissement_, &QTimer::timeout, this, [this] { Rafraîchit(); });
  rafraîchissement_.start(kTour);
  Rafraîchit();
}

QTableWidget* Spectateur::NouvelleTable() {
  auto* table = new QTableWidget(static_cast<int>(rangs_.size()), kColonnes, this);
  table->setObjectName("tableSpectateur");
  table->setHorizontalHeaderLabels(
      {textes_("Colonne capteur"), textes_("Colonne valeur"), textes_("Colonne etat")});
  table->horizontalHeader()->setSectionResizeMode(Nom, QHeaderView::Stretch);
  table->verticalHeader()->hide();
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  for (int ligne = 0; ligne < table->rowCount(); ++ligne) {
    const std::size_t rang = rangs_[static_cast<std::size_t>(ligne)];
    auto* nom = new QTableWidgetItem(EnQt(Désignation(lecteur_.LeChassis().objets[rang])));
    nom->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    nom->setCheckState(suivis_.size() < kCourbesAuDépart ? Qt::Checked : Qt::Unchecked);
    if (nom->checkState() == Qt::Checked) suivis_.emplace(rang, Historique(kEtendue));
    table->setItem(ligne, Nom, nom);
    for (const int colonne : {Valeur, Etat}) {
      auto* case_ = new QTableWidgetItem;
      case_->setTextAlignment((colonne == Valeur ? Qt::AlignRight : Qt::AlignLeft) |
                              Qt::AlignVCenter);
      table->setItem(ligne, colonne, case_);
    }
  }
  connect(table, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* case_) {
    if (case_->column() == Nom) Suit(*case_);
  });
  return table;
}

// A curve that is chosen later shows what the ring still holds.
void Spectateur::Suit(QTableWidgetItem& case_) {
  const std::size_t rang = rangs_[static_cast<std::size_t>(case_.row())];
  if (case_.checkState() != Qt::Checked) {
    suivis_.erase(rang);
  } else if (suivis_.size() < kCourbesAuPlus) {
    suivis_.emplace(rang, Historique(kEtendue));
    for (auto& [sien, historique] : suivis_) historique = Historique(kEtendue);
    suivant_ = lecteur_.Premier();
  } else {
    case_.setCheckState(Qt::Unchecked);
  }
  CommenceLesTraces();
}

void Spectateur::CommenceLesTraces() {
  std::vector<Graphique::Trace> traces;
  for (const auto& [rang, historique] : suivis_) {
    const publication::ObjetPublié& objet = lecteur_.LeChassis().objets[rang];
    traces.push_back({EnQt(objet.nom), objet.unité, kPlancher * Echelle(objet)});
  }
  graphique_->Traces(traces);
}

void Spectateur::Rafraîchit() {
  if (lecteur_.Actualise()) CommenceLesTraces();
  PrendLesEchantillons();
  MontreLeBandeau(lecteur_.EstEnMarche());
  if (lecteur_.LitLeDernier(échantillon_)) MontreLesValeurs();
}

void Spectateur::PrendLesEchantillons() {
  suivant_ = std::max(suivant_, lecteur_.Premier());
  for (; suivant_ < lecteur_.Suivant(); ++suivant_) {
    if (lecteur_.Lit(suivant_, échantillon_) != publication::Lu::Bon) continue;
    for (auto& [rang, historique] : suivis_) {
      historique.Note(échantillon_.Secondes(), Lecture(échantillon_[rang]));
    }
  }
}

void Spectateur::MontreLeBandeau(bool vivante) {
  const publication::ChassisPublié& chassis = lecteur_.LeChassis();
  QString texte = textes_("Texte spectateur") + " " + EnQt(chassis.programme) + ", " +
                  textes_("Texte processus") + " " + QString::number(lecteur_.Processus()) +
                  (chassis.simulé ? " (" + textes_("Texte simule") + ")" : QString()) +
                  (chassis.rejoué.empty() ? QString() : " (" + EnQt(chassis.rejoué) + ")");
  bool alerte = false;
  if (lecteur_.LitLeDernier(échantillon_)) {
    if (échantillon_.Arrêt()) texte += "\n" + textes_("Bandeau arret en cours");
    alerte = échantillon_.Arrêt() || !vivante || SecondesDepuis(échantillon_) > kSilence;
  }
  if (!vivante) {
    texte += "\n" + textes_("Texte hote fini");
  } else if (SecondesDepuis(échantillon_) > kSilence) {
    texte += "\n" + textes_("Texte hote muet") + " " +
             textes_.Nombre(SecondesDepuis(échantillon_), 1) + " s";
  }
  QPalette palette = bandeau_->palette();
  palette.setColor(QPalette::Window, alerte ? QColor(0xc03a1e) : QColor(0xe8eef5));
  palette.setColor(QPalette::WindowText, alerte ? Qt::white : Qt::black);
  bandeau_->setPalette(palette);
  bandeau_->setText(texte);
}

void Spectateur::MontreLesValeurs() {
  const QSignalBlocker sansSuite(table_);
  for (int ligne = 0; ligne < table_->rowCount(); ++ligne) {
    const std::size_t rang = rangs_[static_cast<std::size_t>(ligne)];
    const publication::ObjetPublié& objet = lecteur_.LeChassis().objets[rang];
    const publication::Mesure mesure = échantillon_[rang];
    const bool nombre =
        objet.genre == publication::Genre::Capteur || objet.genre == publication::Genre::Commande;
    table_->item(ligne, Valeur)
        ->setText(nombre ? AvecUnité(textes_.Nombre(mesure.valeur, DécimalesPour(Echelle(objet))),
                                     objet.unité)
                         : EnQt(ValeurEnTexte(objet, mesure)));
    table_->item(ligne, Etat)->setText(EnQt(EtatEnTexte(objet, mesure)));
  }
  std::vector<Graphique::Segments> courbes;
  courbes.reserve(suivis_.size());
  for (const auto& [rang, historique] : suivis_) {
    courbes.push_back(historique.Segments(échantillon_.Secondes()));
  }
  graphique_->Montre(courbes);
}

}  // namespace zuma::host
