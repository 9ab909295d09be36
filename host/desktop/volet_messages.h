#pragma once

#include <QTreeWidget>
#include <cstddef>

#include "base/ref.h"
#include "host/desktop/textes.h"
#include "host/problemes.h"

namespace zuma::host {

/// Everything that the library told, with the time at which it was first seen here.
class VoletMessages : public QTreeWidget {
 public:
  VoletMessages(Ref<Recueil> recueil, const Textes& textes);

  /// Adds what came since. True when something did.
  bool Rafraîchit();

 private:
  void Ajoute(const Problème& problème);

  Ref<Recueil> recueil_;
  const Textes& textes_;
  std::size_t montrés_ = 0;
};

}  // namespace zuma::host
