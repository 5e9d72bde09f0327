// SPDX-License-Identifier: MIT
#ifndef VEXA_XMLFILEWRITER_P_H
#define VEXA_XMLFILEWRITER_P_H

#include <functional>
#include <QByteArray>
#include <QString>

/** What the writers of the content file and of the city index share. */
namespace XmlFileWriter {

/**
 * The text with U+FFFD for each character that no XML file may hold (control characters, half
 * pairs): with one of them inside, the file would be lost to every reader. They are not dropped,
 * since what is left could be the name of something else.
 */
QString writable(QString text);

/**
 * Puts the bytes in place of the file, all or nothing, with the mode and the owner of the old one;
 * a link stays a link. If the folder takes no new file, the old one is overwritten. If neither can
 * be done the old file stays as it was, and nothing is reported.
 *
 * A large file is written in pieces, each of which takes no longer than a frame of the user
 * interface may. After each of them, and again and again while the disk is waited for, goesOn is
 * called, in the caller's thread; if it returns false, the old file stays.
 */
void replace(const QString &path, const QByteArray &bytes,
             const std::function<bool()> &goesOn = nullptr);

} // namespace XmlFileWriter

#endif
