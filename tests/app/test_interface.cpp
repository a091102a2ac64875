#include "app/interfacepage.h"
#include "app/program.h"
#include "common/constants.h"
#include "driver/driversettings.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSlider>
#include <QStackedWidget>
#include <QtTest>

/// The Interface page in the window, with a simulated device.
class TestInterface : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { applyLook(); }
    void sliderByKeyboardWheelAndMouse();
    void outsideChangeIsPickedUp();
    void identityAndBypass();
    void refusedIdentity();
    void noDevice();
    void fitsTheWindow();
};

namespace {

constexpr int patience = 20000 * slowness;
const QStringList deviceTexts = {
    "label_FirmwareVersion"_s, "label_Device"_s, "label_SampleRate"_s, "label_MixerTrueBypass"_s};

DriverSettings driverSettings()
{
    return DriverSettings(QLatin1String(testOrganisation));
}

/// The driver's store as it lies on disk.
QString framesOnDisk()
{
    const QSettings store(
        QLatin1String(testOrganisation), QLatin1String(constants::applicationName));
    return readIni(store.fileName()).value("ASIODRIVER/blockFrames"_s);
}

/// What a label says when the page is refreshed, which is once a second otherwise.
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

QStringList textsOfTheDevice(Panel &panel)
{
    QStringList texts;
    for (const QString &label : deviceTexts)
        texts += text(panel, label);
    return texts;
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
    turnWheel(slider, 120); // the pointer rests there by chance
    QCOMPARE(sizes(panel), "  4 Samples,4,0"_s);
    QApplication::setActiveWindow(&panel.window);
    slider->setFocus();
    turnWheel(slider, 120);
    QCOMPARE(sizes(panel), "  8 Samples,8,1"_s);
    QTest::mouseClick(
        slider, Qt::LeftButton, Qt::NoModifier,
        slider->rect().center() + QPoint(0, 7)); // beside the line
    QCOMPARE(sizes(panel), "  16 Samples,16,2"_s);
    // A double click moves nothing.
    const QPoint at = slider->rect().center();
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(slider, Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(sizes(panel), "  16 Samples,16,2"_s);
}

/// What the device has said holds only while it goes on saying it.
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

void TestInterface::identityAndBypass()
{
    Panel panel("identity", "");
    const QStringList first = {"1.02 0034"_s, "Tamber"_s, "48.0 kHz"_s, "Off"_s};
    QTRY_COMPARE_WITH_TIMEOUT(textsOfTheDevice(panel), first, patience);
    QCOMPARE(text(panel, "label_SoftwareVersion"_s), "4.00 0064"_s);
    panel.find<QRadioButton>("rB_MixerTrueBypass_on"_s)->click();
    panel.tamber.setSampleRate(96000);
    const QStringList second = {"1.02 0034"_s, "Tamber"_s, "96.0 kHz"_s, "On"_s};
    QTRY_COMPARE_WITH_TIMEOUT(textsOfTheDevice(panel), second, patience);
    panel.tamber.setSampleRate(32000);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_SampleRate"_s), QString(), patience);
    panel.tamber.setSampleRate(0);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_SampleRate"_s), "No Device"_s, patience);

    // What the user has marked stays so while the page is refreshed.
    auto *device = panel.find<QLabel>("label_Device"_s);
    device->setSelection(0, 3);
    panel.window.timerInterrupt_1000ms();
    QCOMPARE(device->selectedText(), "Tam"_s);
}

void TestInterface::noDevice()
{
    driverSettings().setBlockFrames(2048);
    Panel panel("no-device", "");
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_Device"_s), "Tamber"_s, patience);
    panel.tamber.setPlugged(false);
    const QStringList none = {"No Device"_s, "No Device"_s, "No Device"_s, "No Device"_s};
    QTRY_COMPARE_WITH_TIMEOUT(textsOfTheDevice(panel), none, patience);
    QTRY_VERIFY_WITH_TIMEOUT(panel.window.findChild<QMessageBox *>(), patience);
    panel.window.findChild<QMessageBox *>()->close();
    // The size is the driver's.
    QTest::keyClick(panel.find("hS_BufferSize"_s), Qt::Key_Left);
    QCOMPARE(sizes(panel), "1024 Samples,1024,9"_s);
    panel.tamber.setPlugged(true);
    QTRY_COMPARE_WITH_TIMEOUT(text(panel, "label_SampleRate"_s), "48.0 kHz"_s, patience);
}

/// Nothing of the page is cut off, and the page does not give the window its size.
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
