#pragma once

#include <QString>

class QFileDialog;

// Answers a file dialog as a user does: the name (relative to the folder the dialog shows, or
// a full path) typed into its name box, then its Save or Open button clicked once the dialog
// has enabled it. Waits for the dialog's own state, never for a fixed time. False, with a
// warning, when the dialog has no name box or never enables the button; the dialog then
// stays open for the caller to reject.
bool typeIntoFileDialog(QFileDialog* pDialog, const QString& strName);
