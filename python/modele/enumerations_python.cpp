#include <array>
#include <utility>

#include "modele/enumerations.h"
#include "modele/tables.h"

namespace py = pybind11;

namespace zuma::python::modele {
namespace {

// An `enum.IntEnum` with these members, in the module's own name.
template <class E, std::size_t N>
void Lie(py::module_& module, const char* nom, const std::pair<const char*, E> (&membres)[N]) {
  py::list paires;
  for (const auto& [texte, valeur] : membres) {
    paires.append(py::make_tuple(texte, static_cast<long>(valeur)));
  }
  using namespace py::literals;
  py::object classe =
      py::module_::import("enum").attr("IntEnum")(nom, paires, "module"_a = "zuma.modele");
  module.attr(nom) = classe;
  ClasseDEnum<E>() = classe.release();
}

#define ZUMA_MEMBRE(Enum, Nom) {#Nom, Enum::Nom}

void CeuxDesEchecs(py::module_& m) {
  using E = Numéro;
  Lie<E>(m, "Numéro",
         {ZUMA_MEMBRE(E, AppelIncorrect),      ZUMA_MEMBRE(E, Dépassement),
          ZUMA_MEMBRE(E, MémoireInsuffisante), ZUMA_MEMBRE(E, IndiceHorsPlage),
          ZUMA_MEMBRE(E, DivisionParZéro),     ZUMA_MEMBRE(E, TypeIncompatible),
          ZUMA_MEMBRE(E, ErreurInterne),       ZUMA_MEMBRE(E, NuméroDeFichierIncorrect),
          ZUMA_MEMBRE(E, FichierIntrouvable),  ZUMA_MEMBRE(E, FichierExistant),
          ZUMA_MEMBRE(E, ErreurDeFichier),     ZUMA_MEMBRE(E, CheminIntrouvable),
          ZUMA_MEMBRE(E, ObjetAbsent),         ZUMA_MEMBRE(E, NullIncorrect),
          ZUMA_MEMBRE(E, OpérationAbsente),    ZUMA_MEMBRE(E, CléDéjàPrésente),
          ZUMA_MEMBRE(E, PasDEnregistrement),  ZUMA_MEMBRE(E, ColonneAbsente),
          ZUMA_MEMBRE(E, RessourcesDépassées), ZUMA_MEMBRE(E, LectureInterrompue),
          ZUMA_MEMBRE(E, BaseVerrouillée),     ZUMA_MEMBRE(E, ElémentAbsent),
          ZUMA_MEMBRE(E, BaseEnLectureSeule),  ZUMA_MEMBRE(E, EditionSansEdit),
          ZUMA_MEMBRE(E, InstructionRefusée),  ZUMA_MEMBRE(E, TableAbsente),
          ZUMA_MEMBRE(E, LigneDisparue),       ZUMA_MEMBRE(E, LigneModifiée),
          ZUMA_MEMBRE(E, BaseIllisible),       ZUMA_MEMBRE(E, MatérielAbsent),
          ZUMA_MEMBRE(E, ErreurDeLObjet)});
}

void CeuxDesDrivers(py::module_& m) {
  using E = ENUM_DRIVER;
  Lie<E>(m, "ENUM_DRIVER",
         {ZUMA_MEMBRE(E, DrvAucun),
          ZUMA_MEMBRE(E, DrvPCL731_PCLD782B),
          ZUMA_MEMBRE(E, DrvPET48DIO_TB24P),
          ZUMA_MEMBRE(E, DrvACL8316_ACLD9182),
          ZUMA_MEMBRE(E, DrvA826PG_DB16B),
          ZUMA_MEMBRE(E, DrvACL6126_ACLD9182),
          ZUMA_MEMBRE(E, DrvPET48DIO_PCLD782B),
          ZUMA_MEMBRE(E, drvPCI9111HR_Vorlanex_EL),
          ZUMA_MEMBRE(E, DrvPCL731_PCLD7225),
          ZUMA_MEMBRE(E, DrvPET48DIO_TB24R),
          ZUMA_MEMBRE(E, DrvACL8316_ACLD9185),
          ZUMA_MEMBRE(E, DrvA826PG_DB16R),
          ZUMA_MEMBRE(E, DrvACL6126_ACLD9185),
          ZUMA_MEMBRE(E, DrvPET48DIO_PCLD7225),
          ZUMA_MEMBRE(E, drvPCI9111HR_Vorlanex_SL),
          ZUMA_MEMBRE(E, DrvPCL813_PCLD881),
          ZUMA_MEMBRE(E, DrvACL8113),
          ZUMA_MEMBRE(E, DrvACL8316_ACLD8125),
          ZUMA_MEMBRE(E, DrvIK121),
          ZUMA_MEMBRE(E, DrvA826PG_DB8225),
          ZUMA_MEMBRE(E, drvpci7841),
          ZUMA_MEMBRE(E, drvpci7841_2),
          ZUMA_MEMBRE(E, drvPCI9111HR_Vorlanex_EA),
          ZUMA_MEMBRE(E, DrvPCL728),
          ZUMA_MEMBRE(E, DrvACL6128),
          ZUMA_MEMBRE(E, DrvACL8316),
          ZUMA_MEMBRE(E, DrvA826PG),
          ZUMA_MEMBRE(E, DrvACL6126),
          ZUMA_MEMBRE(E, drvPCI9111HR_Vorlanex_SA),
          ZUMA_MEMBRE(E, drvPCI6208V_Vorlanex_SA),
          ZUMA_MEMBRE(E, DrvWDT01),
          ZUMA_MEMBRE(E, DrvRègleMTS1Aimant),
          ZUMA_MEMBRE(E, DrvRègleMTS3Aimants3),
          ZUMA_MEMBRE(E, DrvRègleMTS3Aimants2_1),
          ZUMA_MEMBRE(E, DrvRègleMTSMultiMagnet),
          ZUMA_MEMBRE(E, DrvModBus),
          ZUMA_MEMBRE(E, DrvLvdtSolartron),
          ZUMA_MEMBRE(E, DrvRS232),
          ZUMA_MEMBRE(E, drvPET48DIO),
          ZUMA_MEMBRE(E, DrvPCI9111HR),
          ZUMA_MEMBRE(E, DrvPCI_6208_V),
          ZUMA_MEMBRE(E, Drv_UMV4301_Modbus),
          ZUMA_MEMBRE(E, Drv_VarioLS_K9_Modbus),
          ZUMA_MEMBRE(E, Drv_Thumler),
          ZUMA_MEMBRE(E, Drv_EIR_LASER),
          ZUMA_MEMBRE(E, Drv_UTS_0107),
          ZUMA_MEMBRE(E, Drv_Balance_GRAM),
          ZUMA_MEMBRE(E, DrvSpiderV1),
          ZUMA_MEMBRE(E, DrvConditionneurNumeriqueK9),
          ZUMA_MEMBRE(E, DrvConditionneurNumeriqueK9_V1_00),
          ZUMA_MEMBRE(E, DrvRS232BalanceLRPC31),
          ZUMA_MEMBRE(E, DrvRS232IndicateurDEXAL),
          ZUMA_MEMBRE(E, DrvRS232_Balance_JADEVER),
          ZUMA_MEMBRE(E, DrvSpider8),
          ZUMA_MEMBRE(E, DrvRS232METRO),
          ZUMA_MEMBRE(E, DrvRS232METRO_MUX)});
}

void CeuxDeLArbre(py::module_& m) {
  Lie<ENUM_TYPE_FONCTION>(m, "ENUM_TYPE_FONCTION",
                          {ZUMA_MEMBRE(ENUM_TYPE_FONCTION, FctAucune),
                           ZUMA_MEMBRE(ENUM_TYPE_FONCTION, FctEntréesLogiques),
                           ZUMA_MEMBRE(ENUM_TYPE_FONCTION, FctSortiesLogiques),
                           ZUMA_MEMBRE(ENUM_TYPE_FONCTION, FctEntréesAnalogiques),
                           ZUMA_MEMBRE(ENUM_TYPE_FONCTION, FctSortiesAnalogiques)});
  Lie<ServiceCarte>(
      m, "ServiceCarte",
      {ZUMA_MEMBRE(ServiceCarte, ParFonction), ZUMA_MEMBRE(ServiceCarte, CarteEntière),
       ZUMA_MEMBRE(ServiceCarte, BusSimple), ZUMA_MEMBRE(ServiceCarte, BusAvecSuivante)});
  Lie<AttenteCarte>(m, "AttenteCarte",
                    {ZUMA_MEMBRE(AttenteCarte, Aucune), ZUMA_MEMBRE(AttenteCarte, Réponse),
                     ZUMA_MEMBRE(AttenteCarte, Pauses)});
  Lie<Canal::Suite>(m, "Suite",
                    {ZUMA_MEMBRE(Canal::Suite, Rien), ZUMA_MEMBRE(Canal::Suite, Perdue),
                     ZUMA_MEMBRE(Canal::Suite, Retrouvée)});
  Lie<MotHautIK121>(m, "MotHautIK121",
                    {ZUMA_MEMBRE(MotHautIK121, Signe), ZUMA_MEMBRE(MotHautIK121, Compte)});
  Lie<host::Cadence>(m, "Cadence",
                     {ZUMA_MEMBRE(host::Cadence, Réelle), ZUMA_MEMBRE(host::Cadence, Libre)});
}

void CeuxDesCapteurs(py::module_& m) {
  Lie<ENUM_TYPE_CAPTEUR>(
      m, "ENUM_TYPE_CAPTEUR",
      {ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, capteurNormal), ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurMoyen),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurRecouvrement),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurContrainte),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurTemps),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurRégression),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurDeltaL),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurCombinaison),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurSelectionnable),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurRéservé1),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurRéservé2),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurScout55),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurLvdtSolartron),
       ZUMA_MEMBRE(ENUM_TYPE_CAPTEUR, CapteurLePlusPetit)});
  Lie<ENUM_ETAT_CAPTEUR>(
      m, "ENUM_ETAT_CAPTEUR",
      {ZUMA_MEMBRE(ENUM_ETAT_CAPTEUR, Correct), ZUMA_MEMBRE(ENUM_ETAT_CAPTEUR, LectureNonValide),
       ZUMA_MEMBRE(ENUM_ETAT_CAPTEUR, DépassementNonDangeureux),
       ZUMA_MEMBRE(ENUM_ETAT_CAPTEUR, DépassementDangeureux)});
  Lie<ENUM_TYPE_CONTRAINTE>(
      m, "ENUM_TYPE_CONTRAINTE",
      {ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, surface),
       ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, TractionCompressionCylindre),
       ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, TractionCompressionPrisme),
       ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, Flexion), ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, Fendage),
       ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, Traction_Compression),
       ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, Compression),
       ZUMA_MEMBRE(ENUM_TYPE_CONTRAINTE, Traction)});
  Lie<ENUM_FORME_EPROUVETTE>(
      m, "ENUM_FORME_EPROUVETTE",
      {ZUMA_MEMBRE(ENUM_FORME_EPROUVETTE, Inconnue), ZUMA_MEMBRE(ENUM_FORME_EPROUVETTE, Prisme),
       ZUMA_MEMBRE(ENUM_FORME_EPROUVETTE, Cylindre), ZUMA_MEMBRE(ENUM_FORME_EPROUVETTE, TubeRond),
       ZUMA_MEMBRE(ENUM_FORME_EPROUVETTE, TronconDeTubeRond),
       ZUMA_MEMBRE(ENUM_FORME_EPROUVETTE, HexagoneRegulier),
       ZUMA_MEMBRE(ENUM_FORME_EPROUVETTE, Speciale)});
  Lie<ENUM_TYPE_CALCUL_SURFACE>(m, "ENUM_TYPE_CALCUL_SURFACE",
                                {ZUMA_MEMBRE(ENUM_TYPE_CALCUL_SURFACE, Dimension),
                                 ZUMA_MEMBRE(ENUM_TYPE_CALCUL_SURFACE, MasseVolumique)});
  Lie<ENUM_OPERATION_MAV>(
      m, "ENUM_OPERATION_MAV",
      {ZUMA_MEMBRE(ENUM_OPERATION_MAV, RienFaire), ZUMA_MEMBRE(ENUM_OPERATION_MAV, Acquisition),
       ZUMA_MEMBRE(ENUM_OPERATION_MAV, Calcule)});
  Lie<RECOUVREMENT_ETAT>(m, "RECOUVREMENT_ETAT",
                         {ZUMA_MEMBRE(RECOUVREMENT_ETAT, InferieurSeuilBas),
                          ZUMA_MEMBRE(RECOUVREMENT_ETAT, EntreLesSeuils),
                          ZUMA_MEMBRE(RECOUVREMENT_ETAT, SuperieurSeuilHaut)});
  Lie<ParamEprouvette>(m, "ParamEprouvette",
                       {ZUMA_MEMBRE(ParamEprouvette, MethodeCalculDeSurface),
                        ZUMA_MEMBRE(ParamEprouvette, L),
                        ZUMA_MEMBRE(ParamEprouvette, M),
                        ZUMA_MEMBRE(ParamEprouvette, UniteMasse),
                        ZUMA_MEMBRE(ParamEprouvette, MasseVolumique),
                        ZUMA_MEMBRE(ParamEprouvette, UniteMasseVolumique),
                        ZUMA_MEMBRE(ParamEprouvette, A),
                        ZUMA_MEMBRE(ParamEprouvette, B),
                        ZUMA_MEMBRE(ParamEprouvette, C),
                        ZUMA_MEMBRE(ParamEprouvette, D),
                        ZUMA_MEMBRE(ParamEprouvette, E),
                        ZUMA_MEMBRE(ParamEprouvette, H),
                        ZUMA_MEMBRE(ParamEprouvette, N),
                        ZUMA_MEMBRE(ParamEprouvette, S),
                        ZUMA_MEMBRE(ParamEprouvette, Petit_L),
                        ZUMA_MEMBRE(ParamEprouvette, Grand_L),
                        ZUMA_MEMBRE(ParamEprouvette, UniteLongueur),
                        ZUMA_MEMBRE(ParamEprouvette, FormeEprouvette),
                        ZUMA_MEMBRE(ParamEprouvette, TypeDeCalcul),
                        ZUMA_MEMBRE(ParamEprouvette, Offset),
                        ZUMA_MEMBRE(ParamEprouvette, Sélection)});
}

void CeuxDesSorties(py::module_& m) {
  Lie<ENUM_TYPE_COMMANDE>(
      m, "ENUM_TYPE_COMMANDE",
      {ZUMA_MEMBRE(ENUM_TYPE_COMMANDE, Aucune), ZUMA_MEMBRE(ENUM_TYPE_COMMANDE, Normale),
       ZUMA_MEMBRE(ENUM_TYPE_COMMANDE, ToutOuRien), ZUMA_MEMBRE(ENUM_TYPE_COMMANDE, Servo),
       ZUMA_MEMBRE(ENUM_TYPE_COMMANDE, Recopie)});
  Lie<ENUM_ETAT_LOGIQUE>(
      m, "ENUM_ETAT_LOGIQUE",
      {ZUMA_MEMBRE(ENUM_ETAT_LOGIQUE, Actif), ZUMA_MEMBRE(ENUM_ETAT_LOGIQUE, Inactif),
       ZUMA_MEMBRE(ENUM_ETAT_LOGIQUE, Inconnu)});
  Lie<ENUM_ETAT_AU_LOGIQUE>(
      m, "ENUM_ETAT_AU_LOGIQUE",
      {ZUMA_MEMBRE(ENUM_ETAT_AU_LOGIQUE, Aucun), ZUMA_MEMBRE(ENUM_ETAT_AU_LOGIQUE, Activé),
       ZUMA_MEMBRE(ENUM_ETAT_AU_LOGIQUE, Désactivé)});
}

#undef ZUMA_MEMBRE

}  // namespace

void LieLesEnumerations(py::module_& m) {
  CeuxDesEchecs(m);
  CeuxDesDrivers(m);
  CeuxDeLArbre(m);
  CeuxDesCapteurs(m);
  CeuxDesSorties(m);
}

}  // namespace zuma::python::modele
