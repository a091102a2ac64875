#pragma once

#include "app/scenes.h"

#include <functional>

class QMimeData;
class QFileDialog;

/// The dialogs that export scenes to files and import them. They return at once. A file that cannot
/// be taken is refused with one sentence, and nothing is changed then. GUI thread only.
class SceneFiles : public QObject
{
    Q_OBJECT

public:
    /// @param scenes must outlive the object
    /// @param window parent of the dialogs
    SceneFiles(Scenes &scenes, QWidget *window);

    void exportScene(int slot); ///< or tells the user that the slot holds no scene
    void exportLive();
    void backup(); ///< of all slots that hold a scene
    void importScene(int slot);
    void importLive();
    void restore(); ///< of a backup, if the user agrees

    /// Returns the path of the scene file that is dragged, or an empty text.
    static QString fileIn(const QMimeData &data);
    /// Imports a scene file into a slot.
    void importFile(const QString &path, int slot);
    /// Asks for the slot first, or restores a backup if the file is one.
    void dropFile(const QString &path, const QPoint &globalPosition);

private:
    using Take = std::function<void(const QString &path)>;

    QFileDialog *make(const QString &title, const Take &take);
    void save(
        const QString &title, const QString &name,
        const std::vector<storage::ExchangeScene> &scenes);
    void write(const QString &path, const QByteArray &text);
    std::optional<storage::Exchange> read(const QString &path);
    std::optional<storage::Exchange> readScene(const QString &path);
    void importInto(int slot, const storage::Exchange &exchange);
    void importLive(const storage::Exchange &exchange);
    void offerRestore(const storage::Exchange &exchange);
    void reportLeftOut(const storage::Exchange &exchange);

    Scenes &m_scenes;
    QWidget *const m_window;
};
