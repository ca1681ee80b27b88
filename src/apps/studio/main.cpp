// SPDX-License-Identifier: BSD-3-Clause
// The program: reads the command line, opens the window, runs.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>

#include "apps/studio/MainWindow.h"
#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"
#include "host/StandardStreams.h"

namespace studio {

namespace {

struct Options {
    std::vector<std::string> files;
    std::optional<std::string> language;
    std::optional<std::string> screenshot;
};

// What the widgets themselves say, as in file dialogs.
void TranslateWidgets(QApplication& application) {
    static QTranslator translator;
    if (translator.load(QStringLiteral("qtbase_") + QString::fromStdString(TheLanguage()),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(&translator);
}

// Once the frame is there: the picture of the window goes into the file, and the program ends.
void TakeScreenshot(MainWindow& window, const std::string& file) {
    auto* const timer = new QTimer(&window);
    QObject::connect(timer, &QTimer::timeout, &window, [&window, file] {
        if (!window.IsSettled())
            return;
        const bool saved = window.grab().save(QString::fromStdString(file), "PNG");
        if (!saved)
            std::cerr << "telop-studio: " << file << ": the picture cannot be written\n";
        QCoreApplication::exit(saved ? 0 : 1);
    });
    timer->start(200);
}

int Run(const Options& options, int argc, char** argv) {
    // Also for the plug-in, which asks the environment.
    if (options.language)
        setenv("LANGUAGE", options.language->c_str(), 1);
    ChooseLanguage();
    QLocale::setDefault(QLocale(QString::fromStdString(TheLanguage())));
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("telop-studio"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(TELOP_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.telop.Studio"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("org.telop.Studio")));
    TranslateWidgets(application);
    PrepareStyle();
    MainWindow window;
    // A question about the files needs a window that shows; of a picture nobody is there to answer.
    if (!options.screenshot)
        window.show();
    if (!options.files.empty())
        window.Document().OpenFiles(options.files);
    window.show();
    if (options.screenshot)
        TakeScreenshot(window, *options.screenshot);
    else if (options.files.empty())
        QTimer::singleShot(0, &window, [&window] { window.Document().OfferRestore(); });
    return QApplication::exec();
}

} // namespace

} // namespace studio

int main(int argc, char** argv) try {
    host::OpenStandardStreams();
    studio::Options options;
    CLI::App app("Burns text into animation frames, in a window.", "telop-studio");
    app.add_option("FILE", options.files,
                   "A document (.telop), a picture, a folder, a pattern such as shot.####.png, or "
                   "several pictures; without any a test card is shown");
    app.add_option("--language", options.language, "en or ja; otherwise the environment's")
        ->check([](const std::string& name) {
            return studio::HasLanguage(name) ? std::string()
                                             : "'" + name + "' is neither en nor ja";
        });
    app.add_option("--screenshot", options.screenshot,
                   "Draw the window into this PNG file and exit");
    app.set_version_flag("--version", "telop-studio " TELOP_VERSION, "Print the version and exit");
    CLI11_PARSE(app, argc, argv);
    return studio::Run(options, argc, argv);
} catch (const std::exception& error) {
    std::cerr << "telop-studio: " << error.what() << '\n';
    return 1;
}
