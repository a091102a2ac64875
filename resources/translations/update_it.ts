<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>UpdateInformation</name>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the Settings Panel has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;È disponibile la versione più recente del pannello delle impostazioni.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the unit firmware has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;È disponibile la versione più recente del firmware dell’unità.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Versione attuale:</translation>
    </message>
    <message>
        <source>Latest Version:</source>
        <translation>Versione più recente:</translation>
    </message>
    <message>
        <source>NORVEL Update Information</source>
        <translation>Informazioni sugli aggiornamenti NORVEL</translation>
    </message>
    <message>
        <source>Do not show this message again</source>
        <translation>Non mostrare più questo messaggio</translation>
    </message>
    <message>
        <source>Update now</source>
        <translation>Aggiorna ora</translation>
    </message>
    <message>
        <source>Update later</source>
        <translation>Aggiorna più tardi</translation>
    </message>
    <message>
        <source>NORVEL Latest Information</source>
        <translation>Ultime notizie da NORVEL</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>No newer version has been released.</source>
        <translation>Non è disponibile alcuna versione più recente.</translation>
    </message>
    <message>
        <source>&lt;b&gt;Downloading&lt;/b&gt;</source>
        <translation>&lt;b&gt;Download in corso&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>&lt;b&gt;Download complete&lt;/b&gt;</source>
        <translation>&lt;b&gt;Download completato&lt;/b&gt;</translation>
    </message>
    <message>
        <source>The update file could not be downloaded.&lt;br&gt;Please try again after waiting a little while.&lt;br&gt;                You can also download it manually from the NORVEL website.&lt;br&gt;</source>
        <translation>Impossibile scaricare il file di aggiornamento.&lt;br&gt;Riprovare tra qualche istante.&lt;br&gt;                È anche possibile scaricarlo manualmente dal sito web di NORVEL.&lt;br&gt;</translation>
    </message>
    <message>
        <source>The update could not be started.</source>
        <translation>Impossibile avviare l’aggiornamento.</translation>
    </message>
    <message>
        <source>The update server could not be reached.&lt;br&gt;Please try again after waiting a little while.</source>
        <translation>Impossibile raggiungere il server degli aggiornamenti.&lt;br&gt;Riprovare tra qualche istante.</translation>
    </message>
</context>
</TS>
