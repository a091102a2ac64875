<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>UpdateInformation</name>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the Settings Panel has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;Die neueste Version des Einstellungsfensters ist erschienen.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the unit firmware has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;Die neueste Firmware für das Gerät ist erschienen.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Aktuelle Version:</translation>
    </message>
    <message>
        <source>Latest Version:</source>
        <translation>Neueste Version:</translation>
    </message>
    <message>
        <source>NORVEL Update Information</source>
        <translation>NORVEL Update-Informationen</translation>
    </message>
    <message>
        <source>Do not show this message again</source>
        <translation>Diese Meldung nicht mehr anzeigen</translation>
    </message>
    <message>
        <source>Update now</source>
        <translation>Jetzt aktualisieren</translation>
    </message>
    <message>
        <source>Update later</source>
        <translation>Später aktualisieren</translation>
    </message>
    <message>
        <source>NORVEL Latest Information</source>
        <translation>Neuigkeiten von NORVEL</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>No newer version has been released.</source>
        <translation>Es ist keine neuere Version erschienen.</translation>
    </message>
    <message>
        <source>&lt;b&gt;Downloading&lt;/b&gt;</source>
        <translation>&lt;b&gt;Wird heruntergeladen&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&lt;b&gt;Download complete&lt;/b&gt;</source>
        <translation>&lt;b&gt;Herunterladen abgeschlossen&lt;/b&gt;</translation>
    </message>
    <message>
        <source>The update file could not be downloaded.&lt;br&gt;Please try again after waiting a little while.&lt;br&gt;                You can also download it manually from the NORVEL website.&lt;br&gt;</source>
        <translation>Die Update-Datei konnte nicht heruntergeladen werden.&lt;br&gt;Bitte versuchen Sie es in Kürze noch einmal.&lt;br&gt;                Sie können sie auch von der NORVEL-Website herunterladen.&lt;br&gt;</translation>
    </message>
    <message>
        <source>The update could not be started.</source>
        <translation>Das Update konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The update server could not be reached.&lt;br&gt;Please try again after waiting a little while.</source>
        <translation>Der Update-Server ist nicht erreichbar.&lt;br&gt;Bitte versuchen Sie es in Kürze noch einmal.</translation>
    </message>
</context>
</TS>
