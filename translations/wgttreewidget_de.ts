<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>CLS_WgtTreeWidget</name>
    <message>
        <source>Form</source>
        <translation>Ressourcenbaum</translation>
    </message>
    <message>
        <source>msg_no_results</source>
        <translation>Keine Treffer</translation>
    </message>
    <message>
        <source>acc_search_input</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>acc_search_input_desc</source>
        <translation>Geben Sie einen Teil eines Namens ein, um Zeilen im Baum zu finden. Pfeil nach unten wechselt zu den Treffern, Escape leert die Suche.</translation>
    </message>
    <message>
        <source>acc_search_result</source>
        <translation>Suchergebnisse</translation>
    </message>
    <message>
        <source>acc_search_result_desc</source>
        <translation>Zeilen, deren Name zur Suche passt. Eingabe springt zur Zeile, Pfeil nach oben auf dem ersten Treffer führt zurück zur Suchzeile, Escape leert die Suche.</translation>
    </message>
    <message>
        <source>acc_btn_clear</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>acc_btn_clear_desc</source>
        <translation>Leert die Suchzeile und schließt die Treffer.</translation>
    </message>
    <message>
        <source>acc_btn_search</source>
        <translation>Suche starten</translation>
    </message>
    <message>
        <source>acc_btn_search_desc</source>
        <translation>Durchsucht den Baum nach dem Text in der Suchzeile.</translation>
    </message>
</context>
<context>
    <name>CLS_WgtItemToolBar</name>
    <message>
        <source>acc_item_btn_desc</source>
        <translation>Wirkt auf die Zeile dieser Schaltfläche.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>lbl_car_calor_white</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>lbl_car_calor_red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>lbl_car_calor_yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>lbl_car_calor_blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>lbl_car_calor_green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>lbl_car_calor_purple</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>lbl_car_calor_black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>lbl_car_calor_grey</source>
        <translation>Grau</translation>
    </message>
    <message>
        <source>lbl_car_calor_cyan</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>lbl_car_calor_brown</source>
        <translation>Braun</translation>
    </message>
</context>
</TS>
