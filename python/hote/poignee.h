#pragma once

#include <memory>
#include <pybind11/pybind11.h>
#include <string>

#include "hote/session.h"

namespace zuma::python {

/// What Python holds of an object of an open frame. It keeps the session, never the object, and is
/// refused once the frame is closed.
template <class T>
class Poignée {
 public:
  Poignée(std::shared_ptr<Session> session, T* objet)
      : session_(std::move(session)), objet_(objet) {}

  ///@{
  /// The object; throws for a frame that is closed.
  T* operator->() const { return session_->Exige(), objet_; }
  T& operator*() const { return *operator->(); }
  ///@}
  [[nodiscard]] Session& LaSession() const { return *session_; }
  [[nodiscard]] const std::shared_ptr<Session>& Partagée() const { return session_; }

 private:
  std::shared_ptr<Session> session_;
  T* objet_;
};

/// A handle for each of the objects, in their order.
template <class T, class Refs>
[[nodiscard]] pybind11::list Poignées(const std::shared_ptr<Session>& session, const Refs& refs) {
  pybind11::list liste;
  for (const auto& ref : refs) liste.append(Poignée<T>(session, ref.Brut()));
  return liste;
}

}  // namespace zuma::python
