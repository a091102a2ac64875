<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh" sourcelanguage="en">
<context>
    <name>UpdateInformation</name>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the Settings Panel has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;设置面板的最新版本已发布。&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>&lt;font size=+1&gt;&lt;b&gt;The newest version of the unit firmware has been released.&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</source>
        <translation>&lt;font size=+1&gt;&lt;b&gt;设备固件的最新版本已发布。&lt;/b&gt;&lt;/font&gt;&lt;br&gt;</translation>
    </message>
    <message>
        <source>Current Version:</source>
        <translation>当前版本：</translation>
    </message>
    <message>
        <source>Latest Version:</source>
        <translation>最新版本：</translation>
    </message>
    <message>
        <source>NORVEL Update Information</source>
        <translation>NORVEL 更新信息</translation>
    </message>
    <message>
        <source>Do not show this message again</source>
        <translation>不再显示此消息</translation>
    </message>
    <message>
        <source>Update now</source>
        <translation>立即更新</translation>
    </message>
    <message>
        <source>Update later</source>
        <translation>稍后更新</translation>
    </message>
    <message>
        <source>NORVEL Latest Information</source>
        <translation>NORVEL 最新消息</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>No newer version has been released.</source>
        <translation>没有更新的版本。</translation>
    </message>
    <message>
        <source>&lt;b&gt;Downloading&lt;/b&gt;</source>
        <translation>&lt;b&gt;正在下载&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>&lt;b&gt;Download complete&lt;/b&gt;</source>
        <translation>&lt;b&gt;下载完成&lt;/b&gt;</translation>
    </message>
    <message>
        <source>The update file could not be downloaded.&lt;br&gt;Please try again after waiting a little while.&lt;br&gt;                You can also download it manually from the NORVEL website.&lt;br&gt;</source>
        <translation>无法下载更新文件。&lt;br&gt;请稍后重试。&lt;br&gt;                您也可以从 NORVEL 网站手动下载。&lt;br&gt;</translation>
    </message>
    <message>
        <source>The update could not be started.</source>
        <translation>无法启动更新。</translation>
    </message>
    <message>
        <source>The update server could not be reached.&lt;br&gt;Please try again after waiting a little while.</source>
        <translation>无法连接到更新服务器。&lt;br&gt;请稍后重试。</translation>
    </message>
</context>
</TS>
