#pragma once

#include <QObject>
#include <QString>

// Base of every object with a text form: tables, results and workspaces.
class XFile : public QObject
{
    Q_OBJECT

public:
    explicit XFile(QObject* parent = nullptr) : QObject(parent) {}
    ~XFile() override;

    // The object's whole text form.
    virtual QString toString() const = 0;
    // Reads the object from its text form.
    virtual void fromString(QString& text) = 0;
};
