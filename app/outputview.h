#pragma once

#include "app/mixerwidgets.h"
#include "storage/store.h"

#include <QObject>

/// Shows the stored outputs and bus options on the Output page. Follows the store's changes. GUI
/// thread only.
class OutputView : public QObject
{
    Q_OBJECT

public:
    /// Store and widgets must outlive the object.
    OutputView(const storage::Store &store, const OutputWidgets &widgets, QObject *parent);

    /// Shows all stored values again.
    void showAll();

private:
    void show(const storage::ChangeSet &changes);
    void showList(int output);
    void showStereoBus();
    void showTrueBypass();

    const storage::Store &m_store;
    const OutputWidgets &m_widgets;
};
