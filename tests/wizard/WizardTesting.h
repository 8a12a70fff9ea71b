#pragma once

#include "ModalDialogs.h"
#include "XCsvEditor.h"
#include "XCsvTableWidget.h"
#include "XFileDialog.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWizard>

#include <tuple>

// The file dialog answers with this name; the filter it was asked with is kept.
inline void answerOpenDialog(QString const& fileName, QString* filterSeen = nullptr)
{
    XFileDialog::setOpenHook([fileName, filterSeen](QWidget*, QString const& filter) {
        if (filterSeen)
            *filterSeen = filter;
        return fileName;
    });
}

inline bool writeText(QString const& path, QByteArray const& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

// In the editor that just opened: set model cells (row, column, text), close.
using CellEdit = std::tuple<int, int, QString>;
inline std::function<void(QWidget*)> editorEdits(QList<CellEdit> edits, bool* seen = nullptr)
{
    return [edits, seen](QWidget* modal) {
        auto* editor = qobject_cast<XCsvEditor*>(modal);
        if (seen)
            *seen = editor != nullptr;
        if (!editor) {
            modal->close();
            return;
        }
        QAbstractItemModel* model = editor->findChild<XCsvTableWidget*>()->model();
        for (auto const& [row, column, text] : edits)
            model->setData(model->index(row, column), text, Qt::EditRole);
        editor->close();
    };
}

// Closes the editor that just opened with a click on its Close button.
inline std::function<void(QWidget*)> closeEditorByClick(bool* seen = nullptr)
{
    return [seen](QWidget* modal) {
        auto* editor = qobject_cast<XCsvEditor*>(modal);
        if (seen)
            *seen = editor != nullptr;
        QAbstractButton* close = nullptr;
        for (QPushButton* button : modal->findChildren<QPushButton*>()) {
            if (button->text() == QStringLiteral("Close"))
                close = button;
        }
        if (editor && close)
            QTest::mouseClick(close, Qt::LeftButton);
        else
            modal->close();
    };
}

// Closes the message box that just opened and keeps its title and text.
inline std::function<void(QWidget*)> messageBoxSeen(QString* title, QString* text)
{
    return [title, text](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box) {
            *title = box->windowTitle();
            *text = box->text();
            box->accept();
        } else {
            modal->close();
        }
    };
}

// Clicks the message box button showing answer; keeps the box's text and
// the texts of all its buttons.
inline std::function<void(QWidget*)> messageBoxAnswer(QString const& answer, QString* text,
                                                      QStringList* buttons = nullptr)
{
    return [answer, text, buttons](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (!box) {
            modal->close();
            return;
        }
        *text = box->text();
        QAbstractButton* chosen = nullptr;
        for (QAbstractButton* button : box->buttons()) {
            if (buttons)
                *buttons << button->text();
            if (button->text() == answer)
                chosen = button;
        }
        if (chosen)
            QTest::mouseClick(chosen, Qt::LeftButton);
        else
            box->reject();
    };
}

// Lets pending layouts run first: a button shown a moment ago has no size
// yet, and a click on an empty button does nothing.
inline void clickButton(QAbstractButton* button)
{
    QApplication::processEvents();
    QTest::mouseClick(button, Qt::LeftButton);
}
