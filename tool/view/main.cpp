// The command line of the viewer, and its main loop.

#include <Inventor/Qt/SoQt.h>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "Arguments.h"
#include "Failure.h"
#include "Keys.h"
#include "ParsedOption.h"
#include "SceneFile.h"
#include "Window.h"
#include "Words.h"

namespace {

constexpr int kFailed = 1;
constexpr int kMisused = 2;

int fail(const char* problem) {
  std::fprintf(stderr, "ormelle: %s.\n", problem);
  return kFailed;
}

// Qt ends the program when it can't reach the display.
void hearQt(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  fail("the display can't be opened");
  std::_Exit(kFailed);
}

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

std::optional<SbVec2s> parsePixel(const std::string& text) {
  int x = 0;
  int y = 0;
  char rest = 0;
  if (std::sscanf(text.c_str(), "%d,%d%c", &x, &y, &rest) != 2 || x < 0 || y < 0 || x > 32767 || y > 32767)
    throw std::invalid_argument("\"" + text + "\" is not a pixel, as 400,300 is");
  return SbVec2s(static_cast<short>(x), static_cast<short>(y));
}

std::string keysAsText() {
  std::string text = "Keys and buttons:";
  for (const view::Key& key : view::kKeys) text += view::print("\n  %-29s%s", key.keys, key.meaning);
  return text;
}

int show(const view::Options& options) {
  if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY") && !isSet("QT_QPA_PLATFORM"))
    return fail("there is no display to show a window on (DISPLAY is not set); ormelle render draws without one");
  qInstallMessageHandler(hearQt);
  tool::startLibrary();
  int count = 1;
  char name[] = "ormelle";
  char* words[] = {name, nullptr};
  QApplication application(count, words);
  std::setlocale(LC_NUMERIC, "C");  // which Qt takes from the environment
  SoQt::init(static_cast<QWidget*>(nullptr));
  std::string problem;
  {
    view::Window window(options);
    if (!options.isFullScreen) window.show();
    SoQt::mainLoop();
    problem = window.problem();
  }
  return problem.empty() ? 0 : fail(problem.c_str());
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): the options themselves can only run out of memory
int main(int argc, char** argv) {
  view::Options options;
  CLI::App app("Shows a scene in a window, and again whenever its file changes. A click tells what is there.",
               "ormelle view");
  app.footer(keysAsText());
  app.add_option("scene", options.scene, "The scene, or a file of another program")->required()->type_name("SCENE");
  tool::addParsed(&app, "--size", options.size, tool::parseSize, "Width and height in pixels; 1000x750 if not given")
      ->type_name("WxH");
  tool::addParsed(&app, "--background", options.background, tool::parseBackground,
                  "As for ormelle render; white if not given")
      ->type_name("COLOUR");
  app.add_flag("--fullscreen", options.isFullScreen, "Take the whole screen");
  app.add_option("--screenshot", options.screenshot, "Write what the window shows into a picture and end")
      ->type_name("PICTURE.png");
  tool::addParsed(&app, "--pick", options.pick, parsePixel,
                  "Tell what is at a pixel, counted from the top left, and end")
      ->type_name("X,Y");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    return app.exit(problem) == 0 ? 0 : kMisused;
  }
  try {
    return show(options);
  } catch (const std::exception& failure) {
    return fail(failure.what());
  }
}
