// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/**
 * Text as a search compares it: whoever types "aland" means "Åland", "cote d'ivoire" finds
 * "Côte d’Ivoire", and "strasse" finds "Straße". Plain functions; any thread.
 */
namespace SearchText {

/**
 * The text without case, diacritics and differences of width, and with a blank for all that is
 * neither letter nor digit. Two texts that a user would call the same are equal afterwards.
 */
QString folded(const QString &text);

/** The folded words of what a user typed; empty if there is nothing to look for. */
QStringList words(const QString &typed);

/** Whether each of the words is somewhere in the folded text. */
bool matches(const QString &foldedText, const QStringList &words);

} // namespace SearchText
