#include "app/interfacepage.h"
#include "app/program.h"
#include "common/constants.h"
#include "driver/driversettings.h"
#include "tests/app/gestures.h"
#include "tests/app/panel.h"
#include "tests/patience.h"
#include "widgets/clicklabel.h"
#include "widgets/lamp.h"

#include <QClipboard>
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
    void sizesOfTheScale();
    void outsideChangeIsPickedUp();
    void deviceTexts();
    void latency();
    void deviceState();
    void refusedIdentity();
    void fitsTheWindow();
    void valuesCanBeCopied();
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

/// A click on a size below the slider chooses it, and a second click changes nothing.
void TestInterface::sizesOfTheScale()
{
    driverSettings().setBlockFrames(256);
    Panel panel("scale", "");
    openInterfacePage(panel);
    panel.window.show();
    auto *slider = panel.find<QSlider>("hS_BufferSize"_s);
    const auto sizes = panel.window.findChildren<ClickLabel *>();
    QCOMPARE(sizes.size(), 11);
    int lastMiddle = -1;
    for (int step = 10; step >= 0; --step) {
        ClickLabel *size = sizes[step];
        QTest::mouseClick(size, Qt::LeftButton);
        QTest::mouseDClick(size, Qt::LeftButton);
        const QString frames = QString::number(driverSettings().blockFrames());
        QCOMPARE(slider->value(), step);
        QCOMPARE(size->text(), frames);
        QCOMPARE(text(panel, "label_BufferSize"_s).trimmed(), frames + " Samples"_s);
        // The handle is above the size: a click there hits the handle and moves nothing.
        const QPoint handle(
            slider->mapFromGlobal(size->mapToGlobal(size->rect().center())).x(),
            slider->height() / 2);
        QTest::mouseClick(slider, Qt::LeftButton, Qt::NoModifier, handle);
        QCOMPARE(slider->value(), step);
        QVERIFY(lastMiddle < 0 || handle.x() < lastMiddle);
        lastMiddle = handle.x();
    }
    QTest::mouseClick(sizes[3], Qt::RightButton);
    QCOMPARE(slider->value(), 0);
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

void TestInterface::latency()
{
    driverSettings().setBlockFrames(256);
    Panel panel("latency", "");
    const auto become = [&](const QString &latency) {
        return QTest::qWaitFor([&] { return text(panel, "label_Latency"_s) == latency; }, patience);
    };
    QVERIFY(become("5.3 ms at 48.0 kHz"_s));
    panel.find<QSlider>("hS_BufferSize"_s)->setValue(0); // follows at once
    QCOMPARE(panel.find<QLabel>("label_Latency"_s)->text(), "0.08 ms at 48.0 kHz"_s);
    panel.tamber.setSampleRate(44100);
    QVERIFY(become("0.09 ms at 44.1 kHz"_s));
    panel.find<QSlider>("hS_BufferSize"_s)->setValue(10);
    QVERIFY(become("46.4 ms at 44.1 kHz"_s));
    panel.tamber.setSampleRate(32000); // not a rate of the device's list
    QVERIFY(become("64.0 ms at 32.0 kHz"_s));
    panel.tamber.setPlugged(false);
    QVERIFY(become("Rate unknown, would be 42.7 ms at 48.0 kHz"_s));
}

void TestInterface::deviceState()
{
    Panel panel("state", "");
    const auto *lamp = panel.window.findChild<Lamp *>();
    const auto become = [&](const QString &state, Lamp::State shape) {
        return QTest::qWaitFor(
            [&] {
                return text(panel, "label_DeviceState"_s).startsWith(state) &&
                       lamp->state() == shape;
            },
            patience);
    };
    QVERIFY(become("Connected"_s, Lamp::State::On));
    QCOMPARE(panel.find<QLabel>("label_DeviceState"_s)->text(), "Connected"_s);
    panel.find<QRadioButton>("rB_MixerTrueBypass_on"_s)->click();
    QVERIFY(become("Connected. Mixer bypassed"_s, Lamp::State::Barred));
    panel.cable->lose(vxctl::tagMeter);
    QVERIFY(become("Connected, but it does not answer"_s, Lamp::State::Warning));
    panel.tamber.setPlugged(false);
    QVERIFY(become("Not connected: check the USB cable"_s, Lamp::State::Off));
    panel.cable->lose(0);
    panel.tamber.setPlugged(true);
    QVERIFY(become("Connected. Mixer bypassed"_s, Lamp::State::Barred));
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

/// The panel's own Ctrl+C, which copies a strip, leaves selected text alone.
void TestInterface::valuesCanBeCopied()
{
    Panel panel("copied", "[Track3]\nSelect=true\n");
    openInterfacePage(panel);
    panel.window.show();
    QApplication::setActiveWindow(&panel.window);
    auto *version = panel.find<QLabel>("label_SoftwareVersion"_s);
    version->setFocus();
    version->setSelection(0, version->text().size());
    QTest::keyClick(version, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), version->text());
}

QTEST_MAIN(TestInterface)

#include "test_interface.moc"
