#pragma once

#include "simulateduser.h"

#include <QAction>
#include <QFileDialog>

#include <random>

/// A simulated user who does random work at a window: mostly gestures on its controls, and the
/// actions that write files.
class RandomUser
{
public:
    struct Work
    {
        const char *name;
        int share; ///< of all shares
        std::function<void()> act;
    };

    /// @param folder existing folder for exported files
    RandomUser(MainWindow &window, unsigned seed, const QString &folder)
        : m_window(window), m_user(window), m_random(seed), m_folder(folder),
          m_works(
              {{"gesture", 60, [this] { m_user.change(m_random()); }},
               {"save", 6, [this] { trigger("actionSave%1"_s.arg(slot())); }},
               {"recall", 6, [this] { recall(); }},
               {"undo", 8, [this] { trigger("actionUndo"_s); }},
               {"redo", 4, [this] { trigger("actionRedo"_s); }},
               {"export", 2, [this] { write("actionExport_Live"_s, "live.tamber"_s); }},
               {"backup", 2, [this] { write("actionBackup"_s, "all.tamber"_s); }}})
    {
    }

    void add(const Work &work) { m_works.push_back(work); }

    /// Returns the next work, chosen at random by its share.
    const Work &choose()
    {
        int total = 0;
        for (const Work &work : m_works)
            total += work.share;
        int left = below(total);
        for (const Work &work : m_works)
            if ((left -= work.share) < 0) return work;
        return m_works.back();
    }

    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }
    void trigger(const QString &action)
    {
        auto *found = m_window.findChild<QAction *>(action);
        if (!found) qFatal("no %s", qPrintable(action));
        found->trigger();
    }
    /// Closes all dialogs, except those that are about the device.
    void closeDialogs()
    {
        for (auto *dialog : m_window.findChildren<QDialog *>())
            if (dialog->windowTitle() != "USB Disconnected"_s) dialog->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static constexpr int slotCount = 4; ///< the scene memories in use

private:
    int slot() { return 1 + below(slotCount); }
    void recall()
    {
        trigger("actionLoad%1"_s.arg(slot()));
        closeDialogs(); // there is one if the memory is empty
    }
    void write(const QString &action, const QString &name)
    {
        trigger(action);
        if (auto *dialog = m_window.findChild<QFileDialog *>()) {
            dialog->setOption(QFileDialog::DontConfirmOverwrite);
            dialog->selectFile(m_folder + "/"_s + name);
            QMetaObject::invokeMethod(dialog, "accept");
        }
        closeDialogs(); // there is a box instead if no memory holds a scene
    }

    MainWindow &m_window;
    SimulatedUser m_user;
    std::mt19937 m_random;
    const QString m_folder;
    std::vector<Work> m_works;
};

/// The seed of a benchmark's random numbers: that of the environment, to repeat a run, or a new
/// one.
inline unsigned randomSeed()
{
    const unsigned given = qEnvironmentVariable("TAMBER_BENCH_SEED").toUInt();
    return given != 0 ? given : std::random_device()();
}
