// A finished recording in the forms that other programs read: HDF5, and metadata of CSV on the Web.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <hdf5.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include <fcntl.h>
#include <unistd.h>

#include "host/configuration.h"
#include "host/enregistrement_lu.h"
#include "host/fichier_en_ajout.h"
#include "host/verbes/verbes.h"

namespace zuma::host {
namespace {

/// A handle of the library with the call that gives it back.
class Poignée {
 public:
  Poignée(hid_t poignée, herr_t (*ferme)(hid_t)) : poignée_(poignée), ferme_(ferme) {
    if (poignée_ < 0)
      throw std::runtime_error("the HDF5 library refused a call: is the disk full?");
  }
  ~Poignée() { ferme_(poignée_); }
  Poignée(const Poignée&) = delete;
  Poignée& operator=(const Poignée&) = delete;
  operator hid_t() const { return poignée_; }  // as the library's functions want it

 private:
  hid_t poignée_;
  herr_t (*ferme_)(hid_t);
};

void Exige(herr_t réponse) {
  if (réponse < 0) throw std::runtime_error("the HDF5 file cannot be written: is the disk full?");
}

void NoteLeTexte(hid_t objet, const std::string& nom, const std::string& valeur) {
  const Poignée type(H5Tcopy(H5T_C_S1), H5Tclose);
  Exige(H5Tset_size(type, H5T_VARIABLE));
  Exige(H5Tset_cset(type, H5T_CSET_UTF8));
  const Poignée place(H5Screate(H5S_SCALAR), H5Sclose);
  const Poignée attribut(H5Acreate2(objet, nom.c_str(), type, place, H5P_DEFAULT, H5P_DEFAULT),
                         H5Aclose);
  const char* texte = valeur.c_str();
  Exige(H5Awrite(attribut, type, &texte));
}

// One data set of numbers, and what is to be noted at it.
void EcritLesNombres(hid_t fichier, const std::string& nom, const std::vector<double>& nombres,
                     const std::function<void(hid_t)>& note) {
  const hsize_t taille = nombres.size();
  const Poignée place(H5Screate_simple(1, &taille, nullptr), H5Sclose);
  const Poignée liens(H5Pcreate(H5P_LINK_CREATE), H5Pclose);
  Exige(H5Pset_char_encoding(liens, H5T_CSET_UTF8));
  const Poignée ensemble(
      H5Dcreate2(fichier, nom.c_str(), H5T_IEEE_F64LE, place, liens, H5P_DEFAULT, H5P_DEFAULT),
      H5Dclose);
  Exige(H5Dwrite(ensemble, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, nombres.data()));
  note(ensemble);
}

// A name as a data set may bear it, once.
std::string NomLibre(std::string nom, std::set<std::string>& pris) {
  for (char& c : nom) {
    if (c == '/') c = '_';
  }
  if (nom.empty() || nom == ".") nom = "unnamed";
  std::string libre = nom;
  for (int n = 2; !pris.insert(libre).second; ++n) libre = nom + " " + std::to_string(n);
  return libre;
}

void EcritEnHdf5(const EnregistrementLu& lu, const std::string& nom) {
  const Poignée fichier(H5Fcreate(nom.c_str(), H5F_ACC_EXCL, H5P_DEFAULT, H5P_DEFAULT), H5Fclose);
  for (const auto& [clé, valeur] : lu.textes) NoteLeTexte(fichier, clé, valeur);
  std::set<std::string> pris{"time"};
  EcritLesNombres(fichier, "time", lu.secondes,
                  [](hid_t ensemble) { NoteLeTexte(ensemble, "unit", "s"); });
  for (const ColonneLue& colonne : lu.colonnes) {
    EcritLesNombres(fichier, NomLibre(colonne.nom, pris), colonne.valeurs, [&](hid_t ensemble) {
      NoteLeTexte(ensemble, "name", colonne.nom);
      NoteLeTexte(ensemble, "unit", colonne.unité);
      NoteLeTexte(ensemble, "label", colonne.label);
      NoteLeTexte(ensemble, "calibrated", colonne.étalonné);
      NoteLeTexte(ensemble, "calibrated_by", colonne.parQui);
    });
  }
  std::vector<double> perdues, de, à;
  for (const Lacune& lacune : lu.lacunes) {
    perdues.push_back(static_cast<double>(lacune.rangées));
    de.push_back(lacune.de);
    à.push_back(lacune.à);
  }
  const auto sansNote = [](hid_t) {};
  EcritLesNombres(fichier, NomLibre("gap rows", pris), perdues, sansNote);
  EcritLesNombres(fichier, NomLibre("gap from", pris), de, sansNote);
  EcritLesNombres(fichier, NomLibre("gap to", pris), à, sansNote);
  Exige(H5Fflush(fichier, H5F_SCOPE_GLOBAL));
}

// The library does not survive a file that cannot grow: the room is tried before it is called.
void ExigeLaPlace(const EnregistrementLu& lu, const std::string& nom) {
  constexpr std::size_t kParColonne = 16'384;  // bytes of its names, attributes and heaps
  const std::size_t colonnes = lu.colonnes.size() + 4;
  const std::size_t octets = colonnes * (lu.secondes.size() * sizeof(double) + kParColonne);
  const int descripteur = ::open(nom.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  const int erreur =
      descripteur < 0 ? errno : ::posix_fallocate(descripteur, 0, static_cast<off_t>(octets));
  if (descripteur < 0) {
    throw std::runtime_error(nom + " cannot be written: " + std::strerror(erreur));
  }
  ::close(descripteur);
  std::filesystem::remove(nom);
  if (erreur == 0) return;
  throw std::runtime_error(nom + " cannot be written: it needs " + std::to_string(octets) +
                           " bytes: " + std::strerror(erreur));
}

// Metadata for Tabular Data (W3C): what each column is, for programs that know nothing of zuma.
std::string EnCsvw(const EnregistrementLu& lu, const std::string& csv) {
  using Json = nlohmann::ordered_json;
  const auto colonne = [](const std::string& titre, const std::string& unité) {
    return Json{{"titles", unité.empty() ? titre : titre + " [" + unité + "]"},
                {"datatype", "double"},
                {"schema:unitText", unité}};
  };
  Json colonnes = Json::array({colonne("time", "s")});
  for (const ColonneLue& sienne : lu.colonnes) {
    Json json = colonne(sienne.nom, sienne.unité);
    if (!sienne.label.empty()) json["dc:identifier"] = sienne.label;
    if (!sienne.étalonné.empty()) json["zuma:calibrated"] = sienne.étalonné;
    if (!sienne.parQui.empty()) json["zuma:calibratedBy"] = sienne.parQui;
    colonnes.push_back(std::move(json));
  }
  Json json{
      {"@context", Json::array({"http://www.w3.org/ns/csvw", {{"zuma", "urn:zuma:recording:"}}})},
      {"url", std::filesystem::path(csv).filename().string()},
      {"dialect", {{"commentPrefix", "#"}, {"encoding", "utf-8"}}}};
  for (const auto& [clé, valeur] : lu.textes) json["zuma:" + clé] = valeur;
  json["tableSchema"] = {{"columns", colonnes}};
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

int Convert(const OptionsConvert& options) {
  const EnregistrementLu lu = LitLEnregistrement(options.fichier);
  const bool hdf5 = options.forme == "hdf5";
  const std::string nom = hdf5 ? std::filesystem::path(options.fichier).replace_extension(".h5")
                               : std::filesystem::path(options.fichier + "-metadata.json");
  if (std::filesystem::exists(nom)) {
    throw MauvaisUsage(nom + " is there already and is not overwritten: move it away");
  }
  if (hdf5) {
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);  // its failures are told in words here
    ExigeLaPlace(lu, nom);
    try {
      EcritEnHdf5(lu, nom);
    } catch (...) {
      std::filesystem::remove(nom);
      throw;
    }
  } else if (FichierEnAjout(nom).Ajoute(EnCsvw(lu, options.fichier)) != 0) {
    throw std::runtime_error(nom + " cannot be written: is the disk full?");
  }
  if (lu.coupé) std::fprintf(stderr, "zuma: %s\n", TexteDeLaCoupure(options.fichier).c_str());
  std::printf("%s written: %zu rows of %zu columns\n", nom.c_str(), lu.secondes.size(),
              lu.colonnes.size() + 1);
  return kBon;
}

}  // namespace zuma::host
