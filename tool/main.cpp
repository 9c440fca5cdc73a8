// The command line of the tool: options in, one of the commands called, its failure told in one sentence.

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <functional>
#include <new>

#include <Ormelle/PoOrmelle.h>

#include "Commands.h"
#include "Failure.h"
#include "FileKind.h"
#include "ParsedOption.h"

namespace {

constexpr int kFailed = 1;
constexpr int kMisused = 2;

// Runs a command. What it throws is told in one sentence.
int run(const std::function<void()>& command) {
  std::string problem;
  try {
    command();
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return 0;
    problem = "the standard output can't be written";
  } catch (const tool::Failure& failure) {
    problem = failure.what();
  } catch (const std::bad_alloc&) {
    problem = "there is not enough memory for this scene";
  } catch (const std::exception& unforeseen) {
    problem = unforeseen.what();
  }
  std::fprintf(stderr, "ormelle: %s.\n", problem.c_str());
  return kFailed;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): commands catch; the options themselves can only run out of memory
int main(int argc, char** argv) {
  CLI::App app("Draws, measures and converts scenes with Ormelle's representations in them.", "ormelle");
  app.set_version_flag("--version", std::string("ormelle ") + PoOrmelle::getVersion());
  app.require_subcommand(1);
  app.footer("\"ormelle COMMAND --help\" explains a command.");
  int status = 0;

  tool::RenderOptions rendering;
  std::string view;
  CLI::App* render = app.add_subcommand(
      "render",
      "Draw a scene, or what a file of another program shows, into a PNG, SVG or PDF picture, or the "
      "frames of an animation");
  render->add_option("scene", rendering.scene, "The scene, or a file of another program")
      ->required()
      ->type_name("SCENE");
  render
      ->add_option("-o,--output", rendering.picture,
                   "The picture to write; its ending says which kind: .png, .apng, .svg, .pdf")
      ->required()
      ->type_name("PICTURE");
  tool::addParsed(render, "--size", rendering.size, tool::parseSize, "Width and height in pixels; 800x600 if not given")
      ->type_name("WxH");
  render
      ->add_option("--view", view,
                   "Where to look from or to: front, back, left, right, top, bottom, several of them joined by \"-\" "
                   "(front-top), iso (front-right-top), or the direction of looking as a vector x,y,z. The whole scene "
                   "is then seen, whatever cameras it has. If not given: the scene's own camera; for a scene without "
                   "one, the face of a flat scene, else iso")
      ->type_name("DIRECTION");
  tool::addParsed(
      render, "--up", rendering.up, tool::parseAxis,
      "What points upwards in the picture, with --view: x, y, z, -x, -y, -z or a vector; y if not given. The "
      "names of --view follow: with z up, front is the side of -y and top that of +z")
      ->type_name("AXIS");
  render->add_flag("--orthographic", rendering.isOrthographic, "Draw without perspective, with --view");
  tool::addParsed(
      render, "--background", rendering.background, tool::parseBackground,
      "White, grey, navy and other names, #rrggbb, r,g,b with numbers from 0 to 1, or transparent; white if not "
      "given")
      ->type_name("COLOUR");
  render->add_option("--samples", rendering.samples, "Samples for each pixel, 1 to 4096: 16 gives smooth edges")
      ->check(CLI::Range(1, 4096))
      ->capture_default_str()
      ->type_name("N");
  render
      ->add_option("--scale", rendering.scale,
                   "Draw the same picture with so many times as many pixels: lines and points grow with it "
                   "(PNG)")
      ->check(CLI::Range(0.01, 100.0))
      ->capture_default_str()
      ->type_name("F");
  render
      ->add_option("--dpi", rendering.dpi,
                   "How many pixels make an inch where the picture is printed or placed; 96 in SVG and PDF files, and "
                   "not told in PNG files, if not given")
      ->check(CLI::Range(1.0, 100000.0))
      ->type_name("N");
  render
      ->add_option("--frames", rendering.frames,
                   "Draw so many pictures of an animation; the picture's name holds a place for their number, "
                   "frame_%03d.png, or ends with .apng")
      ->check(CLI::Range(1, 100000))
      ->capture_default_str()
      ->type_name("N");
  render->add_option("--fps", rendering.fps, "Frames for each second of the scene's time")
      ->check(CLI::Range(0.001, 1000.0))
      ->capture_default_str()
      ->type_name("N");
  render->add_option("--turn", rendering.turn, "By how many degrees the scene turns about --up during the frames")
      ->check(CLI::Range(-360000.0, 360000.0))
      ->type_name("DEGREES");
  render->callback([&] {
    if (!view.empty()) {
      try {
        rendering.view = tool::parseView(view, rendering.up);
      } catch (const std::invalid_argument& problem) {
        throw CLI::ValidationError("--view", problem.what());
      }
    } else if ((rendering.turn == 0.0 && render->count("--up") > 0) || render->count("--orthographic") > 0) {
      throw CLI::ValidationError("--up and --orthographic go with --view", "give a view too");
    }
    const bool isVector = tool::hasEnding(rendering.picture, ".svg") || tool::hasEnding(rendering.picture, ".pdf");
    if (isVector && render->count("--scale") + render->count("--frames") + render->count("--turn") > 0)
      throw CLI::ValidationError("--scale, --frames and --turn go with PNG pictures", "choose another ending");
    status = run([&] { tool::render(rendering); });
  });

  std::string scene;
  bool asJson = false;
  CLI::App* info = app.add_subcommand("info", "Tell what each representation of a scene generated");
  info->add_option("scene", scene, "The scene, or a file of another program")->required()->type_name("SCENE");
  info->add_flag("--json", asJson, "Tell it in JSON");
  info->callback([&] { status = run([&] { tool::info(scene, asJson); }); });

  std::string mesh;
  std::string format = "binary";
  CLI::App* geometry = app.add_subcommand("geometry", "Write what a scene shows, without its text, as a PLY mesh");
  geometry->add_option("scene", scene, "The scene, or a file of another program")->required()->type_name("SCENE");
  geometry->add_option("-o,--output", mesh, "The mesh to write")->required()->type_name("OUT.ply");
  geometry->add_option("--format", format, "Binary (little-endian) or ascii")
      ->check(CLI::IsMember({"ascii", "binary"}))
      ->capture_default_str()
      ->type_name("ascii|binary");
  geometry->callback([&] { status = run([&] { tool::geometry(scene, mesh, format == "binary"); }); });

  tool::ConvertOptions conversion;
  CLI::App* convert = app.add_subcommand("convert", "Read a scene, or a file of another program, and write a scene");
  convert->add_option("from", conversion.from, "The file to read: a scene, or a file of another program")
      ->required()
      ->type_name("FROM");
  convert->add_option("to", conversion.to, "The file to write: a scene, or by its ending a model: .gltf, .glb, .wrl")
      ->required()
      ->type_name("TO");
  convert->add_flag("--geometry", conversion.isGeometry,
                    "Write what the representations generated, not the fields they generate it from");
  convert->add_flag("--binary", conversion.isBinary, "Write the toolkit's binary format");
  convert
      ->add_option("--memory-limit", conversion.limits.gigabytes,
                   "Gigabytes that reading a file of another program may take; as many as the machine has if not given")
      ->check(CLI::Range(0.01, 1e6))
      ->type_name("GB");
  convert
      ->add_option("--time-limit", conversion.limits.seconds, "Seconds that reading a file of another program may take")
      ->check(CLI::Range(1U, 1000000U))
      ->capture_default_str()
      ->type_name("SECONDS");
  convert
      ->add_option("--time-step", conversion.limits.timeStep,
                   "Which time step to take of a file of another program that has several, counted from 1")
      ->check(CLI::Range(1U, 1000000000U))
      ->capture_default_str()
      ->type_name("N");
  convert->callback([&] { status = run([&] { tool::convert(conversion); }); });

  CLI::App* viewer = app.add_subcommand("view", "Show a scene in a window; \"ormelle view --help\" tells more");
  viewer->set_help_flag();
  viewer->prefix_command();
  viewer->callback([&] { status = run([&] { tool::view(viewer->remaining()); }); });

  std::string kind;
  std::string start;
  bool isForced = false;
  bool isList = false;
  CLI::App* create = app.add_subcommand("new", "Write a scene to start from; --list tells of which kinds there are");
  create->add_option("kind", kind, "What the scene shows; see --list")->type_name("KIND");
  create->add_option("file", start, "The file to write; the standard output if not given")->type_name("SCENE.iv");
  create->add_flag("--list", isList, "List the kinds");
  create->add_flag("--force", isForced, "Write over a file that is there");
  create->callback([&] {
    if (isList == !kind.empty()) throw CLI::ValidationError("new", "give a kind of scene, or --list");
    status = run([&] { isList ? tool::listKinds() : tool::newScene(kind, start, isForced); });
  });

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    return app.exit(problem) == 0 ? 0 : kMisused;
  }
  return status;
}
