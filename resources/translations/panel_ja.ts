<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>StartInformation</name>
    <message>
        <source>If noise occurs, ensure your computer&apos;s power option is set to &apos;High Performance.&apos;&lt;p&gt;Also select the ASIO Driver type within your Audio Software for best performance.&lt;p&gt;Setup information and more FAQs are available on our website:&lt;br&gt;USA: %1</source>
        <extracomment>%1 is a link to the answers</extracomment>
        <translation>ノイズが発生する場合は、コンピューターの電源オプションが「高パフォーマンス」に設定されていることを確認してください。&lt;p&gt;また、最適なパフォーマンスを得るために、お使いのオーディオソフトウェアでドライバーの種類として ASIO を選択してください。&lt;p&gt;セットアップ情報やその他のよくある質問は、ウェブサイトでご覧いただけます。&lt;br&gt;日本：%1</translation>
    </message>
    <message>
        <source>Do not show again</source>
        <translation>今後は表示しない</translation>
    </message>
</context>
</TS>
