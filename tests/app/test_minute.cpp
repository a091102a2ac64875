#include "app/program.h"
#include "tests/app/drivendemo.h"

/// Uses the real demo for about a minute. Afterwards the device holds exactly what the settings
/// file says.
class TestMinute : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void deviceAndFileAgree();
    void readsAFileThatBecomesReadable();
};

void TestMinute::deviceAndFileAgree()
{
    DrivenDemo demo;
    QVERIFY(demo.isReady());

    demo.click("pB_Analog3"_s);
    demo.drag("faderKnob3"_s, 30);
    demo.drag("lowGainKnob"_s, -25);
    demo.drag("thresholdKnob"_s, 60);
    demo.click("pB_EQ3"_s);
    demo.click("pB_Comp3"_s);
    demo.click("pB_LowCut"_s);
    demo.click("pB_Mute9"_s);
    demo.click("pB_Solo2"_s);
    demo.click("pB_LinkOn5_6"_s);
    demo.click("pB_LinkOn3_4"_s);
    demo.click("pB_Solo2"_s);
    demo.drag("panKnob12"_s, -12);
    const auto stored = [&](const char *entry) {
        return demo.stored().value(QLatin1String(entry));
    };
    QTRY_COMPARE_WITH_TIMEOUT(stored("Track12/Pan_pos"), "67"_s, demo.patience);
    QTRY_COMPARE_WITH_TIMEOUT(demo.differences(), QStringList(), demo.patience);

    // Save scene 1, change some values and load the scene again.
    const QFileInfo settings(demo.home.settingsFile());
    const QString scene = settings.dir().filePath("Tamber_sm1.ini"_s);
    demo.display.type({XDisplay::Control, XDisplay::Shift, XDisplay::F1});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(scene), demo.patience);
    const QByteArray saved = bytesOf(scene);
    demo.drag("faderKnob16"_s, 48);
    demo.drag("highFreqKnob"_s, -20);
    demo.click("pB_LinkOff3_4"_s);
    demo.click("pB_masterMute"_s);
    QTRY_COMPARE_WITH_TIMEOUT(stored("Master/Mute"), "true"_s, demo.patience);
    demo.display.type({XDisplay::Control, XDisplay::F1});
    QTRY_COMPARE_WITH_TIMEOUT(bytesOf(settings.filePath()), saved, demo.patience);
    QTRY_COMPARE_WITH_TIMEOUT(demo.differences(), QStringList(), demo.patience);

    demo.toggleCable();
    xcb_window_t box = 0;
    QTRY_VERIFY_WITH_TIMEOUT((box = demo.find("USB Disconnected"_s)), demo.patience);
    demo.display.close(box);
    QTRY_VERIFY_WITH_TIMEOUT(!demo.find("USB Disconnected"_s), demo.patience);
    demo.drag("faderKnob8"_s, 40);
    demo.click("pB_Mute1"_s);
    demo.click("pB_Phase2"_s);
    demo.toggleCable();
    const auto isBack = [&] { return demo.deviceState().inputs[0].mute; };
    QTRY_VERIFY_WITH_TIMEOUT(isBack(), demo.patience);
    demo.click("pB_Solo11"_s); // during the full resend
    demo.drag("masterFaderKnob"_s, 15);
    QTRY_COMPARE_WITH_TIMEOUT(stored("Master/Fader_pos"), "172"_s, demo.patience);
    QTRY_COMPARE_WITH_TIMEOUT(demo.differences(), QStringList(), demo.patience);
    QCOMPARE(stored("Track3_4/Fader_pos"), "187"_s);
    const simulator::MixerState held = demo.deviceState();
    QCOMPARE(held.inputs[2].fader, -16);
    QVERIFY(held.inputs[3].comp.link && held.inputs[3].comp.on && held.inputs[3].eq.lowCut);
    QVERIFY(held.inputs[10].solo && held.inputs[0].mute && held.inputs[1].phase);
}

/// Another program may have the file open when the panel starts.
void TestMinute::readsAFileThatBecomesReadable()
{
    const auto write = [](const PrivateHome &home, const QByteArray &content) {
        const QString file = home.settingsFile();
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QFile out(file);
        QVERIFY(out.open(QIODevice::WriteOnly) && out.write(content) == content.size());
    };
    DrivenDemo demo([&](const PrivateHome &home) { write(home, "not yet"); });
    QTRY_VERIFY_WITH_TIMEOUT(demo.find(QLatin1String(constants::windowTitle)), demo.patience);
    write(demo.home, "[Track3]\nMute=true\n");
    QTRY_VERIFY_WITH_TIMEOUT(demo.deviceState().inputs[2].mute, demo.patience);
}

QTEST_MAIN(TestMinute)
#include "test_minute.moc"
