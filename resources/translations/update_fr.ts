<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>UpdateInformation</name>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the Settings Panel has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;Une nouvelle version du panneau de réglages est disponible.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the unit firmware has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;Une nouvelle version du firmware de l’appareil est disponible.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Version actuelle :</translation>
    </message>
    <message>
        <source>Latest Version:</source>
        <translation>Dernière version :</translation>
    </message>
    <message>
        <source>NORVEL Update Information</source>
        <translation>Informations de mise à jour NORVEL</translation>
    </message>
    <message>
        <source>Do not show this message again</source>
        <translation>Ne plus afficher ce message</translation>
    </message>
    <message>
        <source>Update now</source>
        <translation>Mettre à jour</translation>
    </message>
    <message>
        <source>Update later</source>
        <translation>Plus tard</translation>
    </message>
    <message>
        <source>NORVEL Latest Information</source>
        <translation>Dernières informations NORVEL</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>No newer version has been released.</source>
        <translation>Aucune version plus récente n’est disponible.</translation>
    </message>
    <message>
        <source>&lt;b&gt;Downloading&lt;/b&gt;</source>
        <translation>&lt;b&gt;Téléchargement en cours&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>&lt;b&gt;Download complete&lt;/b&gt;</source>
        <translation>&lt;b&gt;Téléchargement terminé&lt;/b&gt;</translation>
    </message>
    <message>
        <source>The update file could not be downloaded.&lt;br&gt;Please try again after waiting a little while.&lt;br&gt;                You can also download it manually from the NORVEL website.&lt;br&gt;</source>
        <translation>Le fichier de mise à jour n’a pas pu être téléchargé.&lt;br&gt;Veuillez réessayer dans quelques instants.&lt;br&gt;                Vous pouvez aussi le télécharger manuellement depuis le site web de NORVEL.&lt;br&gt;</translation>
    </message>
    <message>
        <source>The update could not be started.</source>
        <translation>La mise à jour n’a pas pu être lancée.</translation>
    </message>
    <message>
        <source>The update server could not be reached.&lt;br&gt;Please try again after waiting a little while.</source>
        <translation>Le serveur de mise à jour est injoignable.&lt;br&gt;Veuillez réessayer dans quelques instants.</translation>
    </message>
</context>
</TS>
