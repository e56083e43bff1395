#pragma once

#include <QObject>
#include <QtPlugin>

// A well-formed Qt plugin of another application's interface.
class CVXForeignPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.NotATool/1.0")
};
