#pragma once

#include "app/mixerwidgets.h"
#include "storage/store.h"

#include <QObject>

/// Shows the Output page as it is stored. GUI thread only.
class OutputView : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the object.
    OutputView(const storage::Store &store, const OutputWidgets &widgets);

    void showAll();

private:
    void show(const storage::ChangeSet &changes);
    void showList(int output);
    void showStereoBus();
    void showTrueBypass();

    const storage::Store &m_store;
    const OutputWidgets &m_widgets;
};
