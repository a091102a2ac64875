#include "app/scenefiles.h"

#include "app/boxes.h"
#include "common/constants.h"
#include "storage/wholefile.h"
#include "widgets/plaintext.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QStandardPaths>
#include <QUrl>

namespace {

QString ending()
{
    return QLatin1String(storage::exchangeEnding);
}

/// Returns a name for a file, without the characters that file systems refuse.
QString fileNameFor(const QString &name)
{
    QString safe;
    for (const QChar c : name)
        safe += c.isLetterOrNumber() || QStringLiteral(" -_.()").contains(c) ? c : QLatin1Char('_');
    return safe.left(80).trimmed() + ending();
}

} // namespace

SceneFiles::SceneFiles(Scenes &scenes, QWidget *window)
    : QObject(window), m_scenes(scenes), m_window(window)
{
}

/// Makes a dialog that is not open yet. A native dialog takes its options when it opens.
QFileDialog *SceneFiles::make(const QString &title, const Take &take)
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    // A folder that does not exist would be taken for the name of a file.
    const QString folder = QFileInfo::exists(documents) ? documents : QDir::homePath();
    auto *dialog = new QFileDialog(
        m_window, title, folder, QStringLiteral("Tamber scenes (*%1)").arg(ending()));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, take);
    return dialog;
}

void SceneFiles::save(
    const QString &title, const QString &name, const std::vector<storage::ExchangeScene> &scenes)
{
    const QByteArray text = storage::toExchange(scenes, QLatin1String(constants::softwareVersion));
    QFileDialog *dialog = make(title, [this, text](const QString &chosen) {
        if (chosen.endsWith(ending(), Qt::CaseInsensitive)) return write(chosen, text);
        // The dialog adds the ending to a name without a dot only, and asks about that file.
        const QString path = chosen + ending();
        if (!QFileInfo::exists(path)) return write(path, text);
        boxes::askFirst(
            m_window, QStringLiteral("This replaces the file %1.").arg(QFileInfo(path).fileName()),
            [this, path, text] { write(path, text); });
    });
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(ending().mid(1));
    dialog->selectFile(fileNameFor(name));
    dialog->open();
}

void SceneFiles::write(const QString &path, const QByteArray &text)
{
    storage::removeLeftovers(storage::realDisk(), path);
    if (storage::replaceFile(storage::realDisk(), path, text)) return;
    boxes::warn(
        m_window,
        QStringLiteral("The file %1 could not be written.").arg(QFileInfo(path).fileName()));
}

void SceneFiles::exportScene(int slot)
{
    if (!m_scenes.holds(slot)) {
        boxes::inform(m_window, QStringLiteral("This scene memory does not exist."));
        return;
    }
    save(QStringLiteral("Export Scene %1").arg(slot), m_scenes.name(slot), {m_scenes.scene(slot)});
}

void SceneFiles::exportLive()
{
    save(
        QStringLiteral("Export Current Settings"), QStringLiteral("Tamber settings"),
        {m_scenes.live()});
}

void SceneFiles::backup()
{
    const std::vector<storage::ExchangeScene> all = m_scenes.all();
    if (all.empty())
        return boxes::inform(m_window, QStringLiteral("No scene memory holds a scene."));
    save(QStringLiteral("Back up All Scenes"), QStringLiteral("Tamber scenes"), all);
}

void SceneFiles::importScene(int slot)
{
    make(QStringLiteral("Import into Scene %1").arg(slot), [this, slot](const QString &path) {
        importFile(path, slot);
    })->open();
}

void SceneFiles::importLive()
{
    make(QStringLiteral("Import Current Settings"), [this](const QString &path) {
        if (const auto exchange = readScene(path)) importLive(*exchange);
    })->open();
}

void SceneFiles::restore()
{
    make(QStringLiteral("Restore Scenes"), [this](const QString &path) {
        if (const auto exchange = read(path)) offerRestore(*exchange);
    })->open();
}

QString SceneFiles::fileIn(const QMimeData &data)
{
    const QList<QUrl> urls = data.urls();
    const QString path = urls.size() == 1 ? urls.first().toLocalFile() : QString();
    return path.endsWith(ending(), Qt::CaseInsensitive) ? path : QString();
}

/// Reads a file, or says why it cannot be taken.
std::optional<storage::Exchange> SceneFiles::read(const QString &path)
{
    const storage::Exchange exchange = storage::readExchange(storage::realDisk(), path);
    if (exchange.problem.isEmpty()) return exchange;
    boxes::warn(m_window, exchange.problem);
    return std::nullopt;
}

/// Reads the file of a single scene, or says why it cannot be taken.
std::optional<storage::Exchange> SceneFiles::readScene(const QString &path)
{
    std::optional<storage::Exchange> exchange = read(path);
    if (!exchange || exchange->scenes.size() == 1) return exchange;
    boxes::inform(
        m_window, QStringLiteral("The file is a backup of %1 scenes. Restore takes it.")
                      .arg(exchange->scenes.size()));
    return std::nullopt;
}

void SceneFiles::reportLeftOut(const storage::Exchange &exchange)
{
    constexpr int listed = 8;
    constexpr int longest = 40; // characters of an entry
    if (exchange.leftOut.isEmpty()) return;
    QStringList names;
    for (const QString &name : exchange.leftOut.mid(0, listed))
        names += name.left(longest);
    QString list = names.join(QLatin1String(", "));
    const int rest = exchange.leftOut.size() - listed;
    if (rest > 0) list += QStringLiteral(" and %1 more").arg(rest);
    boxes::inform(
        m_window,
        QStringLiteral("The panel does not know or cannot read these entries, and leaves them "
                       "out: %1.")
            .arg(list));
}

void SceneFiles::importFile(const QString &path, int slot)
{
    if (const auto exchange = readScene(path)) importInto(slot, *exchange);
}

void SceneFiles::importInto(int slot, const storage::Exchange &exchange)
{
    reportLeftOut(exchange);
    storage::ExchangeScene scene = exchange.scenes.front();
    scene.slot = slot;
    m_scenes.take({scene}, QStringLiteral("Import scene %1").arg(slot));
}

void SceneFiles::importLive(const storage::Exchange &exchange)
{
    reportLeftOut(exchange);
    m_scenes.takeLive(exchange.scenes.front());
}

void SceneFiles::offerRestore(const storage::Exchange &exchange)
{
    if (exchange.scenes.front().slot == 0)
        return boxes::inform(
            m_window, QStringLiteral("The file holds a single scene. Import takes it."));
    QStringList numbers;
    for (const storage::ExchangeScene &scene : exchange.scenes)
        numbers += QString::number(scene.slot);
    boxes::askFirst(
        m_window,
        QStringLiteral("This replaces the scenes %1. Other scenes stay.")
            .arg(numbers.join(QLatin1String(", "))),
        [this, exchange] {
            m_scenes.take(exchange.scenes, QStringLiteral("Restore scenes"));
            reportLeftOut(exchange);
        });
}

void SceneFiles::dropFile(const QString &path, const QPoint &globalPosition)
{
    const std::optional<storage::Exchange> exchange = read(path);
    if (!exchange) return;
    if (exchange->scenes.front().slot != 0) return offerRestore(*exchange);
    auto *menu = new QMenu(m_window);
    menu->setObjectName(QStringLiteral("dropMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Import into"))->setEnabled(false);
    menu->addSeparator();
    for (int slot = 1; slot <= SceneMemories::slotCount; ++slot) {
        const QString text = QStringLiteral("%1  %2").arg(slot).arg(
            m_scenes.holds(slot) ? m_scenes.name(slot).left(40) : QStringLiteral("(empty)"));
        menu->addAction(plaintext::forMenu(text), this, [this, exchange, slot] {
            importInto(slot, *exchange);
        });
    }
    menu->addSeparator();
    menu->addAction(
        QStringLiteral("Current settings"), this, [this, exchange] { importLive(*exchange); });
    menu->popup(globalPosition);
}
