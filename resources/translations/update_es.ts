<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>UpdateInformation</name>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the Settings Panel has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;Ya está disponible la versión más reciente del panel de ajustes.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the unit firmware has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;Ya está disponible la versión más reciente del firmware de la unidad.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>Versión actual:</translation>
    </message>
    <message>
        <source>Latest Version:</source>
        <translation>Versión más reciente:</translation>
    </message>
    <message>
        <source>NORVEL Update Information</source>
        <translation>Información de actualización de NORVEL</translation>
    </message>
    <message>
        <source>Do not show this message again</source>
        <translation>No volver a mostrar este mensaje</translation>
    </message>
    <message>
        <source>Update now</source>
        <translation>Actualizar ahora</translation>
    </message>
    <message>
        <source>Update later</source>
        <translation>Actualizar más tarde</translation>
    </message>
    <message>
        <source>NORVEL Latest Information</source>
        <translation>Últimas noticias de NORVEL</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>No newer version has been released.</source>
        <translation>No hay ninguna versión más reciente.</translation>
    </message>
    <message>
        <source>&lt;b&gt;Downloading&lt;/b&gt;</source>
        <translation>&lt;b&gt;Descargando&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>&lt;b&gt;Download complete&lt;/b&gt;</source>
        <translation>&lt;b&gt;Descarga completada&lt;/b&gt;</translation>
    </message>
    <message>
        <source>The update file could not be downloaded.&lt;br&gt;Please try again after waiting a little while.&lt;br&gt;                You can also download it manually from the NORVEL website.&lt;br&gt;</source>
        <translation>No se ha podido descargar el archivo de actualización.&lt;br&gt;Vuelva a intentarlo dentro de unos momentos.&lt;br&gt;                También puede descargarlo manualmente desde el sitio web de NORVEL.&lt;br&gt;</translation>
    </message>
    <message>
        <source>The update could not be started.</source>
        <translation>No se ha podido iniciar la actualización.</translation>
    </message>
    <message>
        <source>The update server could not be reached.&lt;br&gt;Please try again after waiting a little while.</source>
        <translation>No se ha podido conectar con el servidor de actualizaciones.&lt;br&gt;Vuelva a intentarlo dentro de unos momentos.</translation>
    </message>
</context>
</TS>
