<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>UpdateInformation</name>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the Settings Panel has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;設定パネルの最新バージョンが公開されました。&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the unit firmware has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;本体ファームウェアの最新バージョンが公開されました。&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>現在のバージョン：</translation>
    </message>
    <message>
        <source>Latest Version:</source>
        <translation>最新のバージョン：</translation>
    </message>
    <message>
        <source>NORVEL Update Information</source>
        <translation>NORVEL アップデート情報</translation>
    </message>
    <message>
        <source>Do not show this message again</source>
        <translation>今後このメッセージを表示しない</translation>
    </message>
    <message>
        <source>Update now</source>
        <translation>今すぐアップデート</translation>
    </message>
    <message>
        <source>Update later</source>
        <translation>後でアップデート</translation>
    </message>
    <message>
        <source>NORVEL Latest Information</source>
        <translation>NORVEL 最新情報</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>No newer version has been released.</source>
        <translation>新しいバージョンはありません。</translation>
    </message>
    <message>
        <source>&lt;b&gt;Downloading&lt;/b&gt;</source>
        <translation>&lt;b&gt;ダウンロード中&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>&lt;b&gt;Download complete&lt;/b&gt;</source>
        <translation>&lt;b&gt;ダウンロードが完了しました&lt;/b&gt;</translation>
    </message>
    <message>
        <source>The update file could not be downloaded.&lt;br&gt;Please try again after waiting a little while.&lt;br&gt;                You can also download it manually from the NORVEL website.&lt;br&gt;</source>
        <translation>アップデートファイルをダウンロードできませんでした。&lt;br&gt;しばらくしてからもう一度お試しください。&lt;br&gt;                NORVEL のウェブサイトから手動でダウンロードすることもできます。&lt;br&gt;</translation>
    </message>
    <message>
        <source>The update could not be started.</source>
        <translation>アップデートを開始できませんでした。</translation>
    </message>
    <message>
        <source>The update server could not be reached.&lt;br&gt;Please try again after waiting a little while.</source>
        <translation>アップデートサーバーに接続できませんでした。&lt;br&gt;しばらくしてからもう一度お試しください。</translation>
    </message>
</context>
</TS>
