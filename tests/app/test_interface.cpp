#include "app/interfacepage.h"
#include "app/program.h"
#include "common/constants.h"
#include "driver/driversettings.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"

#include <QRadioButton>
#include <QSettings>
#include <QSlider>
#include <QtTest>

/// The Interface page in the window with a simulated device.
class TestInterface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void sliderByKeyboardWheelAndMouse();
    void outsideChangeIsPickedUp();
    void deviceTexts();
    void refusedIdentity();
    void fitsTheWindow();
};

namespace {

constexpr int patience = 20000 * slowness;
DriverSettings driverSettings()
{
    return DriverSettings(QLatin1String(testOrganisation));
}

/// The buffer size in the driver's store on disk.
QString framesOnDisk()
{
    const QSettings store{
        QLatin1String(testOrganisation), QLatin1String(constants::applicationName)};
    return readIni(store.fileName()).value("ASIODRIVER/blockFrames"_s);
}

/// Refreshes the page, which the panel does once a second, and returns the text of a label.
QString text(Panel &panel, const QString &label)
{
    panel.window.timerInterrupt_1000ms();
    return panel.find<QLabel>(label)->text();
}

/// "label, frames on disk, step on disk"
QString sizes(Panel &panel)
{
    return "%1,%2,%3"_s.arg(
        text(panel, "label_BufferSize"_s), framesOnDisk(),
        panel.file().value("Interface/AudioPeformanceIndex"_s));
}

/// "firmware version, device, sample rate, bypass"
QString textsOfTheDevice(Panel &panel)
{
    QStringList texts;
    for (const char *label : {"FirmwareVersion", "Device", "SampleRate", "MixerTrueBypass"})
        texts += text(panel, "label_"_s + QLatin1String(label));
    return texts.join(QLatin1Char(','));
}

void openInterfacePage(const Panel &panel)
{
    panel.find<QPushButton>("pB_ToInterfaceFromMixer"_s)->click();
}

} // namespace

void TestInterface::sliderByKeyboardWheelAndMouse()
{
    driverSettings().setBlockFrames(256);
    Panel panel("slider", "");
    openInterfacePage(panel);
    panel.window.show();
    auto *slider = panel.find<QSlider>("hS_BufferSize"_s);
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(sizes(panel), " 512 Samples,512,8"_s);
    QTest::keyClick(slider, Qt::Key_PageDown);
    QCOMPARE(sizes(panel), " 256 Samples,256,7"_s);
    QTest::keyClick(slider, Qt::Key_Home);
    QCOMPARE(sizes(panel), "  4 Samples,4,0"_s);
    turnWheel(slider, 120); // without the focus the wheel does nothing
    QCOMPARE(sizes(panel), "  4 Samples,4,0"_s);
    QApplication::setActiveWindow(&panel.window);
    slider->setFocus();
    turnWheel(slider, 120);
    QCOMPARE(sizes(panel), "  8 Samples,8,1"_s);
    QTest::mouseClick(
        slider, Qt::LeftButton, Qt::NoModifier,
        slider->rect().center() + QPoint(0, 7)); // below the groove
    QCOMPARE(sizes(panel), "  16 Samples,16,2"_s);
    // A double click moves nothing.
    const QPoint at = slider->rect().center();
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(slider, Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(sizes(panel), "  16 Samples,16,2"_s);
}

/// The page shows an answer of the device only until the device refuses to repeat it.
void TestInterface::refusedIdentity()
{
    Panel panel("refused", "");
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_FirmwareVersion"_s), "1.02 0034"_s, patience);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_SampleRate"_s), "48.0 kHz"_s, patience);
    panel.cable->lose(vxctl::tagIdentity);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_FirmwareVersion"_s), "No Device"_s, patience);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_Device"_s), "No Device"_s, patience);
    panel.tamber.setPlugged(false);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_SampleRate"_s), "No Device"_s, patience);
    panel.tamber.setPlugged(true);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_SampleRate"_s), "48.0 kHz"_s, patience);
    QCOMPARE(text(panel, "label_FirmwareVersion"_s), "No Device"_s);
    QCOMPARE(text(panel, "label_Device"_s), "No Device"_s);
    panel.cable->lose(0);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_FirmwareVersion"_s), "1.02 0034"_s, patience);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_Device"_s), "Tamber"_s, patience);
}

void TestInterface::outsideChangeIsPickedUp()
{
    driverSettings().setBlockFrames(100);
    Panel panel("outside", "[Interface]\nAudioPeformanceIndex=5\n");
    QCOMPARE(sizes(panel), " 256 Samples,256,7"_s);
    driverSettings().setBlockFrames(1024);
    openInterfacePage(panel);
    QCOMPARE(sizes(panel), "1024 Samples,1024,9"_s);
    driverSettings().setBlockFrames(65540);
    panel.window.on_pB_ToInterfaceFromOutput_released();
    QCOMPARE(sizes(panel), "  4 Samples,4,0"_s);
}

void TestInterface::deviceTexts()
{
    driverSettings().setBlockFrames(2048);
    Panel panel("identity", "");
    const auto become = [&](const QString &texts) {
        return QTest::qWaitFor([&] { return textsOfTheDevice(panel) == texts; }, patience);
    };
    QVERIFY(become("1.02 0034,Tamber,48.0 kHz,Off"_s));
    QCOMPARE(text(panel, "label_SoftwareVersion"_s), "4.00 0064"_s);
    panel.find<QRadioButton>("rB_MixerTrueBypass_on"_s)->click();
    panel.tamber.setSampleRate(96000);
    QVERIFY(become("1.02 0034,Tamber,96.0 kHz,On"_s));
    panel.tamber.setSampleRate(32000);
    QVERIFY(become("1.02 0034,Tamber,,On"_s));
    panel.tamber.setSampleRate(0);
    QVERIFY(become("1.02 0034,Tamber,No Device,On"_s));

    auto *device = panel.find<QLabel>("label_Device"_s);
    device->setSelection(0, 3); // selected text stays selected when the page is refreshed
    panel.window.timerInterrupt_1000ms();
    QCOMPARE(device->selectedText(), "Tam"_s);

    panel.tamber.setPlugged(false);
    QVERIFY(become("No Device,No Device,No Device,No Device"_s));
    // The buffer size belongs to the driver, so it can be changed without a device.
    QTest::keyClick(panel.find("hS_BufferSize"_s), Qt::Key_Left);
    QCOMPARE(sizes(panel), "1024 Samples,1024,9"_s);
}

/// No part of the page is cut off, and opening the page does not resize the window.
void TestInterface::fitsTheWindow()
{
    Panel panel("fits", "");
    panel.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel.window));
    const QSize size = panel.window.size();
    openInterfacePage(panel);
    QCoreApplication::processEvents();
    QCOMPARE(panel.window.size(), size);
    const auto *page = panel.window.findChild<InterfacePage *>();
    for (const QWidget *part : page->findChildren<QWidget *>()) {
        const QByteArray what = (part->objectName() + "/"_s + part->accessibleName()).toUtf8();
        QVERIFY2(part->visibleRegion().boundingRect() == part->rect(), what.constData());
        if (qobject_cast<const QLabel *>(part))
            QVERIFY2(part->width() >= part->minimumSizeHint().width(), what.constData());
    }
}

QTEST_MAIN(TestInterface)

#include "test_interface.moc"
