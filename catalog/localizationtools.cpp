// SPDX-License-Identifier: MIT
#include "catalog/localizationtools.h"

#include <QStringList>

namespace {

struct LanguageCode
{
    const char *locale;
    const char *digits;
};

// In the order in which the map data assigned its codes. "ht", "ta" and "ga" were given a second
// one, and the later counts; nine codes belong to no locale name.
const LanguageCode LanguageCodes[] = {
    {"en_GB", "001"}, {"fr", "002"},    {"de", "003"},    {"es", "004"},    {"it", "005"},
    {"sv", "006"},    {"da", "007"},    {"no", "008"},    {"nb_NO", "008"}, {"nn_NO", "008"},
    {"fi", "009"},    {"en_US", "010"}, {"fr_CH", "011"}, {"de_CH", "012"}, {"pt", "013"},
    {"tr", "014"},    {"is", "015"},    {"ru", "016"},    {"hu", "017"},    {"nl", "018"},
    {"nl_BE", "019"}, {"en_AU", "020"}, {"fr_BE", "021"}, {"de_AT", "022"}, {"en_NZ", "023"},
    {"cs", "025"},    {"sk", "026"},    {"pl", "027"},    {"sl", "028"},    {"zh_TW", "029"},
    {"zh_HK", "030"}, {"zh_CN", "031"}, {"ja", "032"},    {"th", "033"},    {"af", "034"},
    {"sq", "035"},    {"am", "036"},    {"ar", "037"},    {"hy", "038"},    {"ta", "039"},
    {"be", "040"},    {"bn", "041"},    {"bg", "042"},    {"my", "043"},    {"ca", "044"},
    {"ht", "045"},    {"ht", "046"},    {"en_CA", "049"}, {"fa", "050"},    {"fr_CA", "051"},
    {"gd", "052"},    {"ka", "053"},    {"el", "054"},    {"gu", "056"},    {"he", "057"},
    {"hi", "058"},    {"id", "059"},    {"ga", "060"},    {"it_CH", "061"}, {"kn", "062"},
    {"kk", "063"},    {"km", "064"},    {"ko", "065"},    {"lo", "066"},    {"lv", "067"},
    {"lt", "068"},    {"mk", "069"},    {"ms", "070"},    {"ml", "071"},    {"mr", "072"},
    {"mo", "073"},    {"mn", "074"},    {"pt_BR", "076"}, {"pa", "077"},    {"ro", "078"},
    {"sr", "079"},    {"si", "080"},    {"so", "081"},    {"es_MX", "083"}, {"sw", "084"},
    {"sv_FI", "085"}, {"tg", "086"},    {"ta", "087"},    {"te", "088"},    {"bo", "089"},
    {"ti", "090"},    {"tk", "092"},    {"uk", "093"},    {"ur", "094"},    {"uz", "095"},
    {"vi", "096"},    {"cy", "097"},    {"zu", "098"},    {"??", "099"},    {"eu", "102"},
    {"ga", "103"},
};

} // namespace

LocalizationTools::LocalizationTools()
{
    initCharCodeToDigitCodeMap();
}

QString LocalizationTools::charCodeToDigitCode(const QString &name) const
{
    const QStringList parts = name.split(QLatin1Char('_'));
    const QString candidates[] = {name, parts.at(0), parts.value(1), QStringLiteral("en_GB")};
    for (const QString &candidate : candidates) {
        const QString digits = m_digitCodes.value(candidate);
        if (!digits.isEmpty())
            return digits;
    }
    return QString();
}

void LocalizationTools::initCharCodeToDigitCodeMap()
{
    for (const LanguageCode &code : LanguageCodes)
        m_digitCodes[QLatin1String(code.locale)] = QLatin1String(code.digits);
}
