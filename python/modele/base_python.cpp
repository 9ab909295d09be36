// The configuration database.
#include <optional>
#include <pybind11/stl.h>

#include "modele/liaisons.h"
#include "modele/tables.h"
#include "platform/linux/base_sqlite.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

// Work on a file, which may have to wait for another program.
template <class R, class C, class... A>
auto SansVerrou(R (C::*f)(A...)) {
  return [f](C& objet, std::decay_t<A>... arguments) -> R {
    const py::gil_scoped_release libre;
    return (objet.*f)(std::move(arguments)...);
  };
}

void LieLesLignes(py::module_& m) {
  py::class_<Champ>(m, "Champ", "One field of a record.")
      .def_property_readonly(
          "Name", [](const Champ& c) { return std::string(c.Name.Texte()); }, "Name of the column.")
      .def_property_readonly(
          "Value", [](const Champ& c) { return c.Value; }, "Its value.")
      .def("__repr__", [](const Champ& c) {
        return "<Champ " + std::string(c.Name.Texte()) + "=" +
               std::string(py::repr(py::cast(c.Value))) + ">";
      });
  py::class_<Recordset, std::shared_ptr<Recordset>>(
      m, "Recordset", "Rows of a statement, walked from the first to the end.")
      .def_property_readonly("RecordCount", &Recordset::RecordCount, "Number of rows.")
      .def("MoveFirst", &Recordset::MoveFirst, "Fails with 3021 on an empty recordset.")
      .def("MoveNext", &Recordset::MoveNext, "One row on; fails with 3021 at the end.")
      .def_property_readonly("FinDeTable", &Recordset::FinDeTable, "True behind the last row.")
      .def_property_readonly(
          "Fields",
          [](const Recordset& r) {
            return std::vector<Champ>(r.Fields().begin(), r.Fields().end());
          },
          "Fields of the current record in column order.")
      .def("Edit", SansVerrou(&Recordset::Edit), "Opens the current record for writing.")
      .def("Ecrit", &Recordset::Ecrit, "colonne"_a, "valeur"_a,
           "Sets a field of the record opened by Edit.")
      .def("Update", SansVerrou(&Recordset::Update),
           "Saves the record, if its row still holds what was read (else 3197).")
      .def(
          "__getitem__",
          [](const Recordset& r, const std::string& colonne) {
            const Valeur* valeur = ChampNommé(r, colonne);
            if (valeur == nullptr) throw py::key_error(colonne);
            return *valeur;
          },
          "colonne"_a, "Value of a column of the current record.");
}

}  // namespace

void LieLaBase(py::module_& m) {
  LieLesLignes(m);
  py::class_<BaseDeDonnées, std::shared_ptr<BaseDeDonnées>>(m, "BaseDeDonnées",
                                                            "The host's database.")
      .def(
          "OpenRecordset",
          [](BaseDeDonnées& b, const std::string& instruction, int type) {
            const py::gil_scoped_release libre;
            return b.OpenRecordset(instruction, type);
          },
          "instruction"_a, "type"_a = int{BaseDeDonnées::kDynaset}, "Rows of a statement.")
      .def("DébuteLesLectures", SansVerrou(&BaseDeDonnées::DébuteLesLectures),
           "From here on all statements see the database as it stands now. A `with` does both.")
      .def(
          "FinitLesLectures", [](BaseDeDonnées& b) { b.FinitLesLectures(); },
          "Ends what DébuteLesLectures began.")
      .def("__enter__",
           [](const std::shared_ptr<BaseDeDonnées>& b) {
             b->DébuteLesLectures();
             return b;
           })
      .def("__exit__", [](BaseDeDonnées& b, const py::args&) { b.FinitLesLectures(); });
  py::class_<linux_::BaseSqlite, BaseDeDonnées, std::shared_ptr<linux_::BaseSqlite>>(
      m, "BaseSqlite", "A configuration database in a file.")
      .def(py::init([](const std::string& chemin, bool lectureSeule) {
             return std::make_shared<linux_::BaseSqlite>(
                 chemin, linux_::RéglagesBase{.lectureSeule = lectureSeule});
           }),
           "chemin"_a, "lectureSeule"_a = false, "Opens a file that is there.")
      .def(
          "ProblèmesDIntégrité",
          [](const linux_::BaseSqlite& b) {
            std::vector<std::string> textes;
            for (const auto& problème : b.ProblèmesDIntégrité()) textes.push_back(problème.texte);
            return textes;
          },
          "What is wrong with the file itself, empty when it is sound.");
}

}  // namespace zuma::python::modele
