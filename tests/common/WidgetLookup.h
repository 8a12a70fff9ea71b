#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QWidget>

// Finds a child by the text it shows: tests look for what a user sees.
template <typename T> T* findByText(QWidget* parent, QString const& text)
{
    for (T* child : parent->findChildren<T*>()) {
        if (child->text() == text)
            return child;
    }
    return nullptr;
}

inline QAction* findAction(QWidget* parent, QString const& text)
{
    return findByText<QAction>(parent, text);
}

inline QAbstractButton* findButton(QWidget* parent, QString const& text)
{
    return findByText<QAbstractButton>(parent, text);
}

inline QLabel* findLabel(QWidget* parent, QString const& text)
{
    return findByText<QLabel>(parent, text);
}
