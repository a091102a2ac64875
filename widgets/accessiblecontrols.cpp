#include "widgets/accessiblecontrols.h"

#include "widgets/channelcontrol.h"
#include "widgets/stepcontrol.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QApplication>
#include <QComboBox>

namespace {

using gestures::Gesture;

/// The words of the widget that it is a child of.
class Words : public QObject
{
public:
    Words(QWidget *widget, const std::function<QString()> &words) : QObject(widget), words(words) {}

    const std::function<QString()> words;
};

/// A fader, pan marker or knob: a slider or dial with a value that can be set and stepped.
class AccessibleStepControl : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleStepControl(StepControl *control)
        : QAccessibleWidget(control, control->accessibleRole())
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text type) const override
    {
        if (type == QAccessible::Value || type == QAccessible::Description)
            return control()->words();
        return QAccessibleWidget::text(type);
    }

    QVariant currentValue() const override { return control()->value(); }
    QVariant minimumValue() const override { return control()->range().lowest; }
    QVariant maximumValue() const override { return control()->range().highest; }
    QVariant minimumStepSize() const override { return control()->range().step; }
    void setCurrentValue(const QVariant &value) override
    {
        bool valid = false;
        const double number = value.toDouble(&valid);
        if (valid) make({Gesture::Kind::Value, 0, {}, number});
    }

    QStringList actionNames() const override
    {
        return {increaseAction(), decreaseAction(), setFocusAction()};
    }
    void doAction(const QString &action) override
    {
        if (action == increaseAction()) return make({Gesture::Kind::Steps, 1});
        if (action == decreaseAction()) return make({Gesture::Kind::Steps, -1});
        QAccessibleWidget::doAction(action);
    }

private:
    StepControl *control() const { return static_cast<StepControl *>(widget()); }
    void make(const Gesture &gesture)
    {
        if (control()->isEnabled()) emit control()->gestureMade(gesture);
    }
};

/// A drawn widget with words for what it shows.
class AccessibleDrawing : public QAccessibleWidget
{
public:
    AccessibleDrawing(QWidget *drawing, const Words *words)
        : QAccessibleWidget(drawing, QAccessible::StaticText), m_words(words)
    {
    }

    QString text(QAccessible::Text type) const override
    {
        if (type == QAccessible::Value || type == QAccessible::Description) return m_words->words();
        return QAccessibleWidget::text(type);
    }

private:
    const Words *const m_words; ///< belongs to the widget
};

/// A list to choose from. Qt's own interface takes the chosen entry for the name, except on Windows
/// and macOS. Readers announce a choice as a changed name, so this name has both: "Source of line
/// out 1, MASTER L".
class AccessibleList : public QAccessibleWidget
{
public:
    explicit AccessibleList(QComboBox *list) : QAccessibleWidget(list, QAccessible::ComboBox) {}

    int childCount() const override { return 1; }
    QAccessibleInterface *child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(list()->view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child->object() == list()->view() ? 0 : -1;
    }

    QString text(QAccessible::Text type) const override
    {
        QString choice = list()->currentText();
        if (type == QAccessible::Value) return choice;
        QString text = QAccessibleWidget::text(type);
        if (type != QAccessible::Name) return text;
        return text.isEmpty() ? choice : text + QLatin1String(", ") + choice;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = list()->view()->isVisible();
        return state;
    }

    QStringList actionNames() const override { return {showMenuAction(), setFocusAction()}; }
    void doAction(const QString &action) override
    {
        if (action != showMenuAction()) return QAccessibleWidget::doAction(action);
        if (!list()->isEnabled()) return;
        list()->view()->isVisible() ? list()->hidePopup() : list()->showPopup();
    }

private:
    QComboBox *list() const { return static_cast<QComboBox *>(widget()); }
};

/// A background image, which says nothing.
class AccessibleBackground : public QAccessibleWidget
{
public:
    explicit AccessibleBackground(QWidget *image)
        : QAccessibleWidget(image, QAccessible::Whitespace)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

QAccessibleInterface *make(const QString &, QObject *object)
{
    if (auto *control = qobject_cast<StepControl *>(object))
        return new AccessibleStepControl(control);
    if (auto *frame = qobject_cast<ChannelControl *>(object))
        return new AccessibleBackground(frame);
    if (auto *list = qobject_cast<QComboBox *>(object))
        if (!list->isEditable()) return new AccessibleList(list);
    for (QObject *child : object->children())
        if (const auto *words = dynamic_cast<const Words *>(child))
            return new AccessibleDrawing(static_cast<QWidget *>(object), words);
    return nullptr;
}

} // namespace

namespace accessiblecontrols {

void install()
{
    QAccessible::installFactory(make);
}

void setWords(QWidget *widget, const std::function<QString()> &words)
{
    for (QObject *child : widget->children())
        if (dynamic_cast<const Words *>(child)) {
            delete child;
            break;
        }
    new Words(widget, words);
    // Qt keeps the interface that it made first, which does not know the words: while a screen
    // reader runs, Qt makes one as soon as the widget has a name.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(widget)));
}

} // namespace accessiblecontrols
