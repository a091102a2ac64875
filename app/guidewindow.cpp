#include "app/guidewindow.h"

#include <QAbstractTextDocumentLayout>
#include <QPixmap>
#include <QRegularExpression>
#include <QResizeEvent>
#include <QScreen>
#include <QShortcut>
#include <QTextBlock>
#include <QTextList>
#include <QVBoxLayout>

namespace {

constexpr QSize firstSize(900, 720);
constexpr int textHeight = 14; // pixels
constexpr int textMargin = 24;
constexpr int headingMargin = 24; // above a heading
constexpr int paragraphMargin = 10;
constexpr int itemMargin = 2;
constexpr int lineHeight = 115; // percent

/// Returns the anchor of a heading: "levels-and-meters". Web pages of Markdown texts use the same.
QString anchorOf(const QString &heading)
{
    static const QRegularExpression dropped(QStringLiteral("[^\\w -]"));
    QString anchor = heading.toLower();
    return anchor.remove(dropped).replace(QLatin1Char(' '), QLatin1Char('-'));
}

} // namespace

GuideBrowser::GuideBrowser(const QUrl &source, QWidget *parent) : QTextBrowser(parent)
{
    QFont font = this->font();
    font.setPixelSize(textHeight);
    document()->setDefaultFont(font);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // so that the width of the text is known
    // The text cursor is what screen readers follow.
    setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    setOpenLinks(false); // Qt would read the source again
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl &link) {
        goTo(link.fragment());
    });
    setSource(source, QTextDocument::MarkdownResource);
    document()->setDocumentMargin(textMargin);
    layOut();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment)
            if (fragment.fragment().charFormat().isImageFormat())
                m_pictures += fragment.fragment().charFormat().toImageFormat().name();
}

/// Gives headings their anchors, which Qt's reader of Markdown leaves out, and puts space between
/// the paragraphs.
void GuideBrowser::layOut()
{
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        const bool isHeading = block.blockFormat().headingLevel() > 0;
        QTextBlockFormat space;
        space.setTopMargin(isHeading ? headingMargin : block.textList() ? itemMargin : 0);
        const bool isItem = block.textList() && block.next().textList(); // not the last one
        space.setBottomMargin(isItem ? itemMargin : paragraphMargin);
        if (!block.text().contains(QChar::ObjectReplacementCharacter)) // a picture
            space.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
        cursor.mergeBlockFormat(space);
        if (!isHeading) continue;
        QTextCharFormat anchor;
        anchor.setAnchor(true);
        anchor.setAnchorNames({anchorOf(block.text())});
        cursor.mergeBlockCharFormat(anchor);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(anchor);
    }
}

/// Scrolls to a heading. The text cursor follows, for screen readers.
void GuideBrowser::goTo(const QString &anchor)
{
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        if (block.charFormat().anchorNames().contains(anchor)) setTextCursor(QTextCursor(block));
    scrollToAnchor(anchor);
}

void GuideBrowser::resizeEvent(QResizeEvent *event)
{
    if (event->size().width() != event->oldSize().width()) fitPictures();
    QTextBrowser::resizeEvent(event);
}

/// Gives each picture its own size, or the width of the text if that is smaller.
void GuideBrowser::fitPictures()
{
    constexpr int rounding = 4; // Qt rounds the sizes of pictures and lines
    const int room = viewport()->width() - 2 * textMargin - rounding;
    QTextObjectInterface *handler =
        document()->documentLayout()->handlerForObject(QTextFormat::ImageObject);
    for (const QString &name : qAsConst(m_pictures)) {
        QPixmap picture(QLatin1Char(':') + source().resolved(QUrl(name)).path());
        const int width = qBound(1, room, picture.width());
        picture =
            picture.scaledToWidth(qRound(width * devicePixelRatioF()), Qt::SmoothTransformation);
        picture.setDevicePixelRatio(devicePixelRatioF());
        const QUrl url = document()->baseUrl().resolved(QUrl(name));
        document()->addResource(QTextDocument::ImageResource, url, picture);
        // Qt enlarges pictures by the dots per inch of some screens, which blurs them.
        QTextImageFormat format;
        format.setName(name);
        const qreal shown = handler->intrinsicSize(document(), 0, format).width();
        picture.setDevicePixelRatio(devicePixelRatioF() * shown / width);
        document()->addResource(QTextDocument::ImageResource, url, picture);
    }
    document()->markContentsDirty(0, document()->characterCount());
}

GuideWindow::GuideWindow(QWidget *panel) : QWidget(panel, Qt::Window)
{
    setObjectName(QStringLiteral("guideWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Panel Guide"));
    auto *text = new GuideBrowser(QUrl(QLatin1String(source)), this);
    text->setObjectName(QStringLiteral("guideText"));
    text->setAccessibleName(windowTitle());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(text);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &GuideWindow::close);
    resize(firstSize.boundedTo(panel->screen()->availableGeometry().size() * 9 / 10));
}
