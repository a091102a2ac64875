#pragma once

#include <QTextBrowser>
#include <QWidget>

/// Shows a Markdown text with its pictures. A picture that is wider than the window is scaled down
/// to it. Each heading has an anchor, so that "#levels-and-meters" is a link to "Levels and
/// meters". GUI thread only.
class GuideBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    /// @param source of the text; its pictures are looked up beside it
    GuideBrowser(const QUrl &source, QWidget *parent);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOut();
    void goTo(const QString &anchor);
    void fitPictures();

    QStringList m_pictures; ///< as the text names them
};

/// Help > Panel Guide: docs/guide.md, which is compiled into the program. It stays open beside the
/// panel, and deletes itself when it closes. GUI thread only.
class GuideWindow : public QWidget
{
    Q_OBJECT

public:
    static constexpr char source[] = "qrc:/Guide/guide.md";

    explicit GuideWindow(QWidget *panel);
};
