#include "widgets/accessiblecontrols.h"

#include "widgets/channelcontrol.h"
#include "widgets/stepcontrol.h"

#include <QAccessibleWidget>
#include <QApplication>

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

/// A background image, which says nothing.
class AccessibleBackground : public QAccessibleWidget
{
public:
    explicit AccessibleBackground(QWidget *image) : QAccessibleWidget(image, QAccessible::Border) {}

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
    new Words(widget, words);
}

} // namespace accessiblecontrols
