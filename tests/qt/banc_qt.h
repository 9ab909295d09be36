#pragma once

#include <QTest>
#include <QtWidgets>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "dialogs/qt/fenetre_qt.h"
#include "dialogs/qt/fenetres_qt.h"
#include "dialogs/qt/messages_qt.h"
#include "dialogs/qt/mots.h"
#include "outils/chassis_de_demo.h"

// What tests of windows share: an operator who finds things by their names and answers boxes.
namespace zuma::essai {

/// The windows on the screen that hold an element of that name.
inline std::vector<QWidget*> FenêtresAvec(const char* nom) {
  std::vector<QWidget*> trouvées;
  for (QWidget* fenêtre : QApplication::allWidgets()) {
    const bool montrée = fenêtre->isWindow() && fenêtre->isVisible();
    if (montrée && fenêtre->findChild<QWidget*>(nom) != nullptr) trouvées.push_back(fenêtre);
  }
  return trouvées;
}

/// The one window that holds an element of that name, active and ready for keys.
inline QWidget* FenêtreAvec(const char* nom) {
  const std::vector<QWidget*> trouvées = FenêtresAvec(nom);
  if (trouvées.size() != 1 || !QTest::qWaitForWindowActive(trouvées.front())) {
    throw std::runtime_error(std::string("no single window with ") + nom);
  }
  return trouvées.front();
}

template <class Widget>
Widget& Trouve(QWidget* fenêtre, const char* nom) {
  auto* const trouvé = fenêtre->findChild<Widget*>(nom);
  if (trouvé == nullptr) throw std::runtime_error(std::string("no ") + nom);
  return *trouvé;
}

inline void Clique(QWidget* fenêtre, const char* bouton) {
  QTest::mouseClick(&Trouve<QWidget>(fenêtre, bouton), Qt::LeftButton);
}

/// Has the operator do something as soon as events are served in a window opened from now on.
inline void Ensuite(std::function<void()> geste) {
  QTimer::singleShot(0, qApp, std::move(geste));
}

/// Has the operator do something once a condition holds, or after ten seconds without it.
inline void UneFoisQue(std::function<bool()> condition, std::function<void()> geste,
                       int essais = 500) {
  QTimer::singleShot(20, qApp, [=] {
    if (essais == 0 || condition()) return geste();
    UneFoisQue(condition, geste, essais - 1);
  });
}

/// Answers the next message box with Enter; `vu` gets its title and texts.
inline void Répondra(QStringList& vu) {
  Ensuite([&vu] {
    auto* const boîte = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(boîte, nullptr);
    vu << boîte->windowTitle() << boîte->text() << boîte->informativeText();
    QTest::keyClick(boîte, Qt::Key_Return);
  });
}

inline bool Disparaît(const QPointer<QWidget>& fenêtre) {
  return QTest::qWaitFor([&] { return fenêtre.isNull(); }, 2000);
}

/// A demo frame in windows with English words.
class UnChassisEnFenêtres : public testing::Test {
 protected:
  void Charge(std::int32_t index = linux_::kChassisDeDémonstration, bool lectureSeule = false) {
    chassis =
        std::make_unique<ChassisDeDémo>(base.chemin, index, messages, fenêtres, mots, lectureSeule);
  }

  BaseDeDémo base;
  Ref<linux_::Traducteur> mots = EnAnglais();
  qt::MessagesQt messages{mots};
  qt::FenêtresQt fenêtres{mots};
  std::unique_ptr<ChassisDeDémo> chassis;
};

}  // namespace zuma::essai
