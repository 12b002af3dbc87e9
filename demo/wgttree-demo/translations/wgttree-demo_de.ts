<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>CLS_DemoWindow</name>
    <message>
        <source>WgtTreeWidget demo</source>
        <translation>WgtTreeWidget-Demo</translation>
    </message>
    <message>
        <source>Event log</source>
        <translation>Ereignisprotokoll</translation>
    </message>
    <message>
        <source>Custom tree (check, drag to reorder)</source>
        <translation>Eigener Baum (abhaken, verschieben)</translation>
    </message>
    <message>
        <source>Favourites</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>All channels</source>
        <translation>Alle Kanäle</translation>
    </message>
    <message>
        <source>On line</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>Off line</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>Status filter</source>
        <translation>Statusfilter</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Ressourcen</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>Anzeigen:</translation>
    </message>
    <message>
        <source>Layout</source>
        <translation>Layout</translation>
    </message>
    <message>
        <source>layout: %1 of %2 dragged rows added</source>
        <translation>Layout: %1 von %2 gezogenen Zeilen hinzugefügt</translation>
    </message>
    <message>
        <source>Layout (drop cameras here)</source>
        <translation>Layout (Kameras hier ablegen)</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>double click: %1</source>
        <translation>Doppelklick: %1</translation>
    </message>
    <message>
        <source>favourite selected: %1</source>
        <translation>Favorit gewählt: %1</translation>
    </message>
    <message>
        <source>the saved view of the resource tree could not be read</source>
        <translation>Die gespeicherte Ansicht des Ressourcenbaums ist nicht lesbar</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Open the live view</source>
        <translation>Liveansicht öffnen</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Play the recordings back</source>
        <translation>Aufzeichnungen wiedergeben</translation>
    </message>
    <message>
        <source>the device layer gives no resource tree</source>
        <translation>Die Geräteschicht liefert keinen Ressourcenbaum</translation>
    </message>
    <message>
        <source>the device layer lists no resource</source>
        <translation>Die Geräteschicht führt keine Ressourcen</translation>
    </message>
    <message>
        <source>All resources</source>
        <translation>Alle Ressourcen</translation>
    </message>
    <message>
        <source>the resource tree could not be built</source>
        <translation>Der Ressourcenbaum ließ sich nicht aufbauen</translation>
    </message>
    <message>
        <source>Custom tree</source>
        <translation>Eigener Baum</translation>
    </message>
    <message>
        <source>no custom tree in this installation</source>
        <translation>Kein eigener Baum in dieser Installation</translation>
    </message>
    <message>
        <source>no favourites in this installation</source>
        <translation>Keine Favoriten in dieser Installation</translation>
    </message>
    <message>
        <source>installation: %1 hosts, %2 channels, %3 rows</source>
        <translation>Installation: %1 Hosts, %2 Kanäle, %3 Zeilen</translation>
    </message>
    <message>
        <source>status batch %1: %2 channels, %3 on, %4 off</source>
        <translation>Statuspaket %1: %2 Kanäle, %3 online, %4 offline</translation>
    </message>
    <message>
        <source>menu: %1 on %2%3</source>
        <translation>Menü: %1 für %2%3</translation>
    </message>
    <message>
        <source> (checked)</source>
        <translation> (angehakt)</translation>
    </message>
    <message>
        <source>check batch of %1: %2</source>
        <translation>%1 Häkchen geändert: %2</translation>
    </message>
    <message>
        <source>screen scale %1, no application hub to tell</source>
        <translation>Bildschirmskalierung %1, kein Anwendungs-Hub zum Benachrichtigen</translation>
    </message>
    <message>
        <source>screen scale %1: SignResizeView sent</source>
        <translation>Bildschirmskalierung %1: SignResizeView gesendet</translation>
    </message>
    <message>
        <source>%1 hosts  ·  %2 channels, %3 on line  ·  %4 status batches  ·  %5 simulated changes</source>
        <translation>%1 Hosts  ·  %2 Kanäle, %3 online  ·  %4 Statuspakete  ·  %5 simulierte Änderungen</translation>
    </message>
    <message>
        <source>Preview all channels</source>
        <translation>Vorschau aller Kanäle</translation>
    </message>
    <message>
        <source>Open preview</source>
        <translation>Vorschau öffnen</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Show channel numbers</source>
        <translation>Kanalnummern anzeigen</translation>
    </message>
    <message>
        <source>Show off-line channels</source>
        <translation>Offline-Kanäle anzeigen</translation>
    </message>
    <message>
        <source>Expand all</source>
        <translation>Alle aufklappen</translation>
    </message>
    <message>
        <source>Collapse all</source>
        <translation>Alle zuklappen</translation>
    </message>
    <message>
        <source>Refresh states</source>
        <translation>Status aktualisieren</translation>
    </message>
    <message>
        <source>Remote configuration</source>
        <translation>Fernkonfiguration</translation>
    </message>
</context>
</TS>
