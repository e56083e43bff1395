#pragma once

#include <QString>

// The host's texts, and Qt's own (the buttons and labels of standard dialogs), in the
// system language where a catalogue for it exists.
class CVXHostTranslator
{
public:
    // Installs the catalogues for the system locale into the application, once per
    // application object; nothing happens where no catalogue matches the locale.
    static void install();

private:
    static void installCatalogue(const QString& strName, const QString& strFolder);
};
