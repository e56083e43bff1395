#pragma once

#include <QString>
#include <QStringList>

class CVXSSettings;

// The files opened or saved last, newest first, kept in the host's settings. Every host
// that runs shares the list: each change reads it from the settings file again first, so
// that what another host added meanwhile is kept, and is written back at once.
class CVXRecentFileList
{
public:
    static constexpr int MaxFiles = 10;

    explicit CVXRecentFileList(CVXSSettings& settings);

    // As the settings file holds it now.
    QStringList paths() const;
    // Puts the file first (absolute path), dropping the oldest beyond MaxFiles.
    void add(const QString& strPath);
    void remove(const QString& strPath);
    void clear();

private:
    // Reads the list afresh, lets change alter it and writes it back.
    template <typename Change>
    void update(Change change);

    CVXSSettings& m_settings;
};
