-- Frame 50: one MC 8 at 340 hex with two of its inputs, and a sensor on the second one.
--     zuma init ma_base.db && sqlite3 ma_base.db <chassis.sql
INSERT INTO "Chassis" ("Index", "Nom du Chassis", "Frequence rafraichissement capteurs",
                       "Frequence rafraichissement entrées logiques")
  VALUES (50, 'Chassis de la MC 8', 100, 20);
INSERT INTO "Carte" ("Index", "Adresse", "Nom de la Carte") VALUES (50, '340', 'MC 8');
INSERT INTO "Liaison Chassis / Carte" ("Chassis", "Carte") VALUES (50, 50);
INSERT INTO "Fonction" ("Index", "Carte", "Driver", "Type de Fonction", "Nom de la Fonction",
                        "Mise à Jour par Fonction", "Nombre de Canaux")
  VALUES (501, 50, 'DrvMC8', 'Entrée Analogique', 'Mesures', 0, 2);
INSERT INTO "Canal" ("Index", "Fonction", "Numéro du Canal", "Nom du Canal")
  VALUES (50100, 501, 0, 'Voie 0'), (50107, 501, 7, 'Voie 7');
INSERT INTO "Capteur" ("Index", "Type de Capteur", "Nom du Capteur", "Canal", "Unité d'Etalonnage",
                       "Sécurité Minimale en Points", "Sécurité Maximale en Points",
                       "Sécurité Maximale en Unité", "Point 2 - Unité", "Point 2 - Point")
  VALUES (500, 'Normal', 'Tension 7', 50107, 'V', -1, 65537, 10, 10, 65536);
INSERT INTO "Liaison Chassis / Capteur" ("Chassis", "Capteur", "Label")
  VALUES (50, 500, 'Tension 7');
