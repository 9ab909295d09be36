import pytest

import zuma
import zuma.modele as zm


@pytest.fixture(scope="session")
def fichier(tmp_path_factory):
    """The demo frames."""
    return zuma.demo(tmp_path_factory.mktemp("base") / "demo.db")


class Muette(zm.BoîteDeMessage):
    def __init__(self):
        super().__init__()
        self.textes = []

    def Montre(self, texte, objet):
        self.textes.append((texte, objet.classe, objet.nom))


class Temps(zm.ZED_Timer):
    """A clock that each reading moves on by 50 microseconds."""
    heure = 0.0

    def LitMicrosecondes(self):
        self.heure += 50.0
        return self.heure


class Ports(zm.PortsES):
    """A bus on which everything is ready: what was written is what a person would measure."""

    def __init__(self):
        super().__init__()
        self.tour, self.écrits, self.nombre = 0, {}, 0

    def Inp(self, port):
        self.tour += 1
        return self.tour & 0xFF

    Inpw = Inpd = Inp

    def Outp(self, port, valeur):
        self.écrits[port] = valeur
        self.nombre += 1

    Outpw = Outpd = Outp


class Montage:
    """Demo frame 1, started, on a simulated machine or on the ports of Python."""

    def __init__(self, fichier, plateforme=None, timer=None, sécurité=None, paramètres=None,
                 traducteur=None, registre=None, malgré=False):
        self.plateforme = plateforme or zm.PlateformeSimulée(Muette())
        self.timer = timer or self.plateforme.Timer
        self.registre = registre or zm.RegistreErreurs()
        self.sécurité = sécurité or zm.Securite(self.timer)
        self.chassis = zm.Chassis(self.plateforme)
        self.chassis.TimerExact(self.timer)
        self.chassis.ChargeErreur(self.registre)
        if isinstance(self.sécurité, zm.Securite):
            self.sécurité.Branche(self.chassis)
        with zm.BaseSqlite(fichier) as base:
            self.chassis.ChargeLeChassis(base, 1)
            self.chassis.Lien(base, "1", self.sécurité, paramètres, traducteur)
            self.chassis.MiseàJourDesLiens()
        if self.plateforme.ports is None:
            self.plateforme.Branche(self.chassis)
        self.chassis.Initialise()
        self.secondes = 0.0

    def passe(self, nombre=1):
        for _ in range(nombre):
            self.secondes += 0.001
            if self.plateforme.ports is None:
                self.plateforme.AvanceJusquA(self.secondes)
            self.chassis.MetàJour()


def plateforme_de_python():
    plateforme = zm.Plateforme()
    plateforme.drivers = zm.CréeLesDrivers()
    plateforme.messages, plateforme.ports = Muette(), Ports()
    return plateforme


@pytest.fixture
def montage(fichier):
    m = Montage(fichier)
    yield m
    if m.chassis.EstOuvert:
        m.chassis.Décharge()


@pytest.fixture
def sur_python(fichier):
    return lambda **choix: Montage(fichier, plateforme_de_python(), Temps(), **choix)
