// SPDX-License-Identifier: MIT
#include "screenBase/AccessibleItems.h"

#include <QAccessible>
#include <QPointer>
#include <QQuickItem>

namespace {

// The object whose interface Qt's own factory is making right now.
QObject *makingQtInterfaceFor = nullptr;

// An item that shows a value as words (the month wheel shows "March" for
// 3) declares them in this property; a screen reader then reads the words,
// not the number.
constexpr char shownTextProperty[] = "accessibleText";

bool hasShownText(const QObject *object)
{
    return object->metaObject()->indexOfProperty(shownTextProperty) >= 0;
}

// A button made of Qt Quick alone: it answers a screen reader's press by
// the function Qt looks for by name.
bool pressedByName(const QObject *object)
{
    return object->metaObject()->indexOfMethod("accessiblePressAction()") >= 0;
}

// Qt's interface for an item, with a truthful disabled state and, for a
// text item, the Text interface over its text.
class AccessibleItem : public QAccessibleInterface,
                       public QAccessibleTextInterface,
                       public QAccessibleActionInterface
{
public:
    explicit AccessibleItem(QAccessibleInterface *qtInterface)
        : m_qt(qtInterface), m_qtId(QAccessible::uniqueId(qtInterface)),
          m_item(qobject_cast<QQuickItem *>(qtInterface->object()))
    {}
    ~AccessibleItem() override { QAccessible::deleteAccessibleInterface(m_qtId); }

    bool isValid() const override { return m_item && m_qt->isValid(); }
    QObject *object() const override { return m_qt->object(); }
    QWindow *window() const override { return m_qt->window(); }
    QAccessibleInterface *parent() const override { return m_qt->parent(); }
    QAccessibleInterface *child(int index) const override { return m_qt->child(index); }
    int childCount() const override { return m_qt->childCount(); }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return m_qt->indexOfChild(child);
    }
    QAccessibleInterface *childAt(int x, int y) const override { return m_qt->childAt(x, y); }
    QAccessibleInterface *focusChild() const override { return m_qt->focusChild(); }
    QList<QPair<QAccessibleInterface *, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override
    {
        return m_qt->relations(match);
    }
    QString text(QAccessible::Text type) const override { return m_qt->text(type); }
    void setText(QAccessible::Text type, const QString &text) override
    {
        m_qt->setText(type, text);
    }
    QRect rect() const override { return m_qt->rect(); }
    QAccessible::Role role() const override { return m_qt->role(); }

    QAccessible::State state() const override
    {
        QAccessible::State state = m_qt->state();
        if (m_item && !m_item->isEnabled()) {
            state.disabled = true;
            state.focusable = false;
        }
        // A text says it can take the keyboard only when Tab reaches it
        // (the report, the ⓘ text), not every label.
        if (m_item && isText() && role() != QAccessible::EditableText &&
            !m_item->activeFocusOnTab())
            state.focusable = false;
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface && isText())
            return static_cast<QAccessibleTextInterface *>(this);
        if (type == QAccessible::ActionInterface && qtActions())
            return static_cast<QAccessibleActionInterface *>(this);
        return m_qt->interface_cast(type);
    }

    // The Text interface of a text item: its text, read only.
    QString text(int startOffset, int endOffset) const override
    {
        return words().mid(startOffset, endOffset - startOffset);
    }
    int characterCount() const override { return int(words().size()); }
    void selection(int, int *startOffset, int *endOffset) const override
    {
        *startOffset = *endOffset = 0;
    }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override
    {
        return m_item ? m_item->property("cursorPosition").toInt() : 0;
    }
    void setCursorPosition(int) override {}
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *startOffset, int *endOffset) const override
    {
        *startOffset = 0;
        *endOffset = characterCount();
        return {};
    }

    // Qt lists an action both for the control and for the handler the
    // screens give it ("Press", "Press"); a screen reader lists each once.
    QStringList actionNames() const override
    {
        QStringList names = qtActions()->actionNames();
        names.removeDuplicates();
        return names;
    }
    void doAction(const QString &name) override { qtActions()->doAction(name); }
    QStringList keyBindingsForAction(const QString &name) const override
    {
        return qtActions()->keyBindingsForAction(name);
    }

private:
    QAccessibleActionInterface *qtActions() const { return m_qt->actionInterface(); }

    bool isText() const
    {
        if (!m_item)
            return false;
        if (hasShownText(m_item))
            return true;
        const QAccessible::Role r = role();
        if (r == QAccessible::EditableText && m_item->inherits("QQuickTextInput"))
            return true;
        return (r == QAccessible::StaticText || r == QAccessible::Heading) &&
               m_item->inherits("QQuickText");
    }
    QString words() const
    {
        if (!m_item)
            return {};
        return m_item->property(hasShownText(m_item) ? shownTextProperty : "text").toString();
    }

    QAccessibleInterface *m_qt;
    QAccessible::Id m_qtId;
    QPointer<QQuickItem> m_item;
};

QAccessibleInterface *accessibleItem(const QString &, QObject *object)
{
    if (object == makingQtInterfaceFor || !object->inherits("QQuickItem") ||
        !(object->inherits("QQuickText") || object->inherits("QQuickControl") ||
          object->inherits("QQuickTextInput") || hasShownText(object) || pressedByName(object)))
        return nullptr;
    // Qt's own interface, made by its factory and kept in its registry under an
    // id of its own; ours stands for the item and hands everything else to it.
    QObject *outer = std::exchange(makingQtInterfaceFor, object);
    QAccessibleInterface *qtInterface = QAccessible::queryAccessibleInterface(object);
    makingQtInterfaceFor = outer;
    return qtInterface ? new AccessibleItem(qtInterface) : nullptr;
}

} // namespace

void AccessibleItems::install()
{
    static bool installed = false;
    if (!std::exchange(installed, true))
        QAccessible::installFactory(accessibleItem);
}
