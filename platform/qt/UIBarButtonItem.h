#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <string>

// An item of a navigation bar or tool bar: a titled button, a custom view, or a fixed space.
class UIBarButtonItem : public QObject {
    Q_OBJECT

public:
    enum class Kind { Title, CustomView, FixedSpace };

    static UIBarButtonItem* withTitle(std::string title, std::function<void()> action, QObject* owner = nullptr);
    static UIBarButtonItem* withCustomView(QWidget* view, QObject* owner = nullptr);
    static UIBarButtonItem* fixedSpace(double width, QObject* owner = nullptr);

    Kind kind() const { return kind_; }
    const std::string& title() const { return title_; }
    QWidget* customView() const { return customView_; }
    double width() const { return width_; }
    void setWidth(double width) { width_ = width; }
    void trigger() const;

private:
    explicit UIBarButtonItem(Kind kind, QObject* owner) : QObject(owner), kind_(kind) {}

    Kind kind_;
    std::string title_;
    QPointer<QWidget> customView_;
    double width_ = 0;
    std::function<void()> action_;
};

// A row of bar button items (the accessory bar above a text field's keyboard).
class UIToolbar : public QWidget {
    Q_OBJECT

public:
    explicit UIToolbar(QWidget* parent = nullptr);
    void setItems(const std::vector<UIBarButtonItem*>& items, bool animated = false);
    const std::vector<UIBarButtonItem*>& items() const { return items_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<UIBarButtonItem*> items_;
};
