#pragma once

// The layout tool's own translation. Every program that uses the layout manager gets the
// tool's texts in the system language, where a catalogue for it is built in.
class CVXSLayoutTranslator
{
public:
    // Installs the catalogue for the system locale into the application once; nothing
    // happens without an application object or when no catalogue matches the locale.
    static void install();
};
