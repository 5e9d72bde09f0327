// SPDX-License-Identifier: MIT
#include "host/ui/uioptions.h"

#include "host/shared/enginesession.h"
#include <optional>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>

namespace {

QSize sizeIn(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\A([1-9]\\d{2,4})x([1-9]\\d{2,4})\\z"));
    const QRegularExpressionMatch match = form.match(text);
    return match.hasMatch() ? QSize(match.captured(1).toInt(), match.captured(2).toInt()) : QSize();
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Manages the offline maps of this device."));
    parser.addOptions({
        {QStringLiteral("data-dir"),
         QStringLiteral("Keep all map data, downloads and settings below this folder instead of "
                        "the device's own places."),
         QStringLiteral("DIR")},
        {QStringLiteral("base-uri"), QStringLiteral("Content server."), QStringLiteral("URI")},
        {QStringLiteral("locale"), QStringLiteral("Language and country, such as de_DE."),
         QStringLiteral("NAME")},
        {QStringLiteral("style"), QStringLiteral("Colours: light or dark."),
         QStringLiteral("STYLE")},
        {QStringLiteral("size"), QStringLiteral("Size of the window, such as 360x640."),
         QStringLiteral("SIZE")},
        {QStringLiteral("self-test"),
         QStringLiteral("Show every page with made-up data, without a network, and check it.")},
        {QStringLiteral("pictures"),
         QStringLiteral("With --self-test: keep a picture of every view in this folder."),
         QStringLiteral("DIR")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")},
        {QStringLiteral("version"), QStringLiteral("Show the program's version.")},
    });
}

// The parser asks the application for the program's name; the options are read before there is one,
// because they choose its language.
QString helpText(const QCommandLineParser &parser, const QStringList &arguments)
{
    QByteArray name = arguments.value(0, QStringLiteral("vexa-maps-ui")).toLocal8Bit();
    char *names[] = {name.data(), nullptr};
    int count = 1;
    std::optional<QCoreApplication> application;
    if (!QCoreApplication::instance())
        application.emplace(count, names);
    return parser.helpText();
}

} // namespace

UiOptions UiOptions::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    UiOptions options;
    if (!parser.parse(arguments)) {
        options.errorString = parser.errorText();
        return options;
    }
    if (parser.isSet(QStringLiteral("help")))
        options.output = helpText(parser, arguments);
    if (parser.isSet(QStringLiteral("version")))
        options.output = QStringLiteral("vexa-maps-ui " VEXA_VERSION);
    options.dataFolder = parser.value(QStringLiteral("data-dir"));
    options.locale = parser.value(QStringLiteral("locale"));
    options.style = parser.value(QStringLiteral("style"));
    options.pictureFolder = parser.value(QStringLiteral("pictures"));
    options.selfTest = parser.isSet(QStringLiteral("self-test"));
    const QString uri = parser.value(QStringLiteral("base-uri"));
    options.baseUri = EngineSession::checkedBaseUri(uri);
    const QString size = parser.value(QStringLiteral("size"));
    options.size = sizeIn(size);
    if (!parser.positionalArguments().isEmpty())
        options.errorString =
            QStringLiteral("What is \"%1\"?").arg(parser.positionalArguments().first());
    else if (parser.isSet(QStringLiteral("base-uri")) && options.baseUri.isEmpty())
        options.errorString = QStringLiteral("\"%1\" is no http address.").arg(uri);
    else if (parser.isSet(QStringLiteral("size")) && !options.size.isValid())
        options.errorString = QStringLiteral("\"%1\" is no size.").arg(size);
    else if (!options.style.isEmpty() && options.style != QLatin1String("light")
             && options.style != QLatin1String("dark"))
        options.errorString = QStringLiteral("\"%1\" is no style.").arg(options.style);
    return options;
}

void UiOptions::applyLocale() const
{
    if (locale.isEmpty())
        return;
    qputenv("LANGUAGE", locale.toLatin1());
    qputenv("LC_ALL", locale.toLatin1() + ".UTF-8");
}
