#pragma once

#include <QByteArray>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QVector>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

/// The X display: sends real pointer and keyboard input, and finds the top-level windows of all
/// programs. For displays without a window manager.
class XDisplay
{
public:
    XDisplay() : m_connection(xcb_connect(nullptr, nullptr))
    {
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    }
    ~XDisplay() { xcb_disconnect(m_connection); }
    XDisplay(const XDisplay &) = delete;
    XDisplay &operator=(const XDisplay &) = delete;

    void movePointer(const QPoint &to) { fake(XCB_MOTION_NOTIFY, 0, to); }
    void press(int button = XCB_BUTTON_INDEX_1)
    {
        fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button));
    }
    void release(int button = XCB_BUTTON_INDEX_1)
    {
        fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button));
    }
    /// Turns the wheel by notches, up if positive.
    void turnWheel(int notches)
    {
        const int button = notches > 0 ? XCB_BUTTON_INDEX_4 : XCB_BUTTON_INDEX_5;
        for (int left = std::abs(notches); left > 0; --left) {
            press(button);
            release(button);
        }
    }
    void click(const QPoint &at)
    {
        movePointer(at);
        press();
        release();
    }

    /// Key codes of a standard keyboard: the evdev code plus 8.
    enum Key : std::uint8_t {
        Escape = 9,
        Six = 15,
        Zero = 19,
        Minus = 20,
        Equal = 21,
        Tab = 23,
        E = 26,
        Y = 29,
        Return = 36,
        Control = 37,
        A = 38,
        Shift = 50,
        Z = 52,
        C = 54,
        V = 55,
        Space = 65,
        F1 = 67,
        F2 = 68,
        F12 = 96,
        Home = 110,
        Up = 111,
        PageUp = 112,
        Left = 113,
        Right = 114,
        End = 115,
        Down = 116,
        PageDown = 117,
        Delete = 119,
        Menu = 135,
    };

    void hold(Key key) { fake(XCB_KEY_PRESS, key); }
    void letGo(Key key) { fake(XCB_KEY_RELEASE, key); }

    /// Presses the keys one after the other, then releases all of them.
    void type(const QVector<Key> &chord)
    {
        for (const Key key : chord)
            fake(XCB_KEY_PRESS, key);
        for (const Key key : chord)
            fake(XCB_KEY_RELEASE, key);
    }

    /// Stands for every process. 0 does not, because it is the id of a QProcess that has ended.
    static constexpr qint64 anyProcess = -1;

    /// The visible top-level window of a process with this title, 0 if there is none.
    xcb_window_t find(const QString &title, qint64 process)
    {
        for (const xcb_window_t window : windowsOf(process))
            if (QString::fromUtf8(property(window, "_NET_WM_NAME")) == title) return window;
        return 0;
    }

    /// The visible top-level windows of a process.
    QVector<xcb_window_t> windowsOf(qint64 process)
    {
        QVector<xcb_window_t> windows;
        for (const xcb_window_t window : stack()) {
            const bool own = process == anyProcess || processOf(window) == process;
            if (own && isShown(window)) windows += window;
        }
        return windows;
    }

    /// The process of a window, 0 if the window does not name it.
    qint64 processOf(xcb_window_t window)
    {
        const QByteArray id = property(window, "_NET_WM_PID");
        return id.size() == 4 ? *reinterpret_cast<const qint32 *>(id.data()) : 0;
    }

    /// Whether any program shows a window.
    bool showsAny()
    {
        const QVector<xcb_window_t> windows = stack();
        return std::any_of(windows.begin(), windows.end(), [this](xcb_window_t window) {
            return isShown(window);
        });
    }

    QPoint position(xcb_window_t window)
    {
        const auto reply = wait(
            xcb_translate_coordinates_reply,
            xcb_translate_coordinates(m_connection, window, m_root, 0, 0));
        return reply ? QPoint(reply->dst_x, reply->dst_y) : QPoint();
    }

    QSize size(xcb_window_t window)
    {
        const auto reply = wait(xcb_get_geometry_reply, xcb_get_geometry(m_connection, window));
        return reply ? QSize(reply->width, reply->height) : QSize();
    }

    /// Whether window `a` is above window `b`.
    bool isAbove(xcb_window_t a, xcb_window_t b) { return stack().indexOf(a) > stack().indexOf(b); }

    void raise(xcb_window_t window)
    {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        sync();
    }

    /// Gives the keyboard focus to a window, as a window manager would.
    void focus(xcb_window_t window)
    {
        xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        sync();
    }

    /// The window that gets the keys. A program takes the focus for a new window only after the
    /// window is visible.
    xcb_window_t focused()
    {
        const auto reply = wait(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection));
        return reply ? reply->focus : xcb_window_t(XCB_WINDOW_NONE);
    }

    void move(xcb_window_t window, const QPoint &to)
    {
        const std::int32_t place[] = {to.x(), to.y()};
        xcb_configure_window(
            m_connection, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
        sync();
    }

    /// Sends the message of a window manager when the user closes a window.
    void close(xcb_window_t window)
    {
        xcb_client_message_event_t event = {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_PROTOCOLS");
        event.data.data32[0] = atom("WM_DELETE_WINDOW");
        xcb_send_event(m_connection, 0, window, 0, reinterpret_cast<const char *>(&event));
        sync();
    }

private:
    template <typename Reply, typename Cookie>
    std::unique_ptr<Reply, decltype(&std::free)>
    wait(Reply *(*reply)(xcb_connection_t *, Cookie, xcb_generic_error_t **), Cookie cookie)
    {
        return {reply(m_connection, cookie, nullptr), &std::free};
    }

    /// Returns when the server has processed all requests.
    void sync() { wait(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection)); }

    void fake(std::uint8_t type, std::uint8_t detail, const QPoint &at = {})
    {
        const auto x = static_cast<std::int16_t>(at.x());
        const auto y = static_cast<std::int16_t>(at.y());
        xcb_test_fake_input(m_connection, type, detail, XCB_CURRENT_TIME, m_root, x, y, 0);
        sync();
    }

    xcb_atom_t atom(const QByteArray &name)
    {
        const auto length = static_cast<std::uint16_t>(name.size());
        const auto reply =
            wait(xcb_intern_atom_reply, xcb_intern_atom(m_connection, 0, length, name.constData()));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }

    QByteArray property(xcb_window_t window, const QByteArray &name)
    {
        const auto reply = wait(
            xcb_get_property_reply,
            xcb_get_property(m_connection, 0, window, atom(name), XCB_ATOM_ANY, 0, 256));
        if (!reply) return QByteArray();
        return QByteArray(
            static_cast<const char *>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get()));
    }

    bool isShown(xcb_window_t window)
    {
        const auto reply =
            wait(xcb_get_window_attributes_reply, xcb_get_window_attributes(m_connection, window));
        return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    }

    /// All top-level windows, the lowest first.
    QVector<xcb_window_t> stack()
    {
        const auto reply = wait(xcb_query_tree_reply, xcb_query_tree(m_connection, m_root));
        if (!reply) return {};
        const xcb_window_t *windows = xcb_query_tree_children(reply.get());
        return {windows, windows + xcb_query_tree_children_length(reply.get())};
    }

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
};
