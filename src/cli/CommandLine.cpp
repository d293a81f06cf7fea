#include "cli/CommandLine.h"

#include <cstdio>
#include <new>

#include <QRegularExpression>

#include "ai/AITreeConverter.h"
#include "ai/OfflineTrees.h"
#include "exchange/MapImport.h"
#include "model/DocumentError.h"
#include "model/DocumentWriter.h"
#include "script/MapFiles.h"
#include "script/ScriptEditor.h"
#include "script/ScriptRunner.h"

namespace quilmora {

namespace {

enum ExitStatus { succeeded = 0, failed = 1, wrongUsage = 2 };

const QString standardStream = QStringLiteral("-");

constexpr char usage[] =
    "usage: quilmora-cli convert INPUT OUTPUT\n"
    "       quilmora-cli layout LAYOUT INPUT OUTPUT [--size WxH]\n"
    "       quilmora-cli generate PROMPT OUTPUT [--layout LAYOUT] [--size WxH] [--theme ID]\n"
    "       quilmora-cli script\n"
    "       quilmora-cli --version\n"
    "\n"
    "convert reads a map, a plain document, a package, .opml, .mm (FreeMind) or .md (Markdown), and writes it by its\n"
    "extension: .mindmap and .json as a plain document, .opml, .md, .svg, .png and .pdf as the export of that name. A\n"
    "document that ends in \"/\" or is a package already becomes a package.\n"
    "\"-\" as INPUT is standard input: a document, OPML, FreeMind or Markdown, known by how it begins. \"-\" as OUTPUT "
    "is\n"
    "standard output, which gets a plain document.\n"
    "layout arranges all topics on a canvas of this size, 1200x800 unless told, then writes. LAYOUT is tree,\n"
    "verticalTree, radial, leftRightTree or orgChart.\n"
    "generate writes a map that the offline generator makes for the prompt, such as \"Create a map about tea\",\n"
    "laid out as radial unless told, in the colours of the built-in theme ID, such as ocean.\n"
    "script answers JSON lines on standard input with JSON lines on standard output.\n";

int wrong() {
  std::fputs(usage, stderr);
  return wrongUsage;
}

// One line, whatever a file's name or a damaged document adds to the reason.
int failure(const QString& file, const QString& reason) {
  QString line = QStringLiteral("quilmora-cli: %1: %2").arg(file, reason);
  for (QChar& character : line)
    if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
        character == QChar::ParagraphSeparator)
      character = u' ';
  std::fprintf(stderr, "%s\n", line.toUtf8().constData());
  return failed;
}

// Throws FileError.
QByteArray standardInput() {
  QByteArray bytes;
  QByteArray piece(1 << 20, Qt::Uninitialized);
  while (const std::size_t count = std::fread(piece.data(), 1, static_cast<std::size_t>(piece.size()), stdin)) {
    bytes.append(piece.constData(), static_cast<qsizetype>(count));
    if (bytes.size() > maxImportSize) throw FileError(QStringLiteral("standard input is too large"));
  }
  if (std::ferror(stdin) != 0) throw FileError(QStringLiteral("standard input cannot be read"));
  return bytes;
}

// Throws FileError.
void writeStandardOutput(const QByteArray& bytes) {
  const auto size = static_cast<std::size_t>(bytes.size());
  if (std::fwrite(bytes.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0)
    throw FileError(QStringLiteral("standard output cannot be written"));
}

// Runs work(), which concerns a file. Returns the exit status.
template <class Work>
int tryOn(const QString& file, Work&& work) {
  try {
    work();
  } catch (const DocumentError& error) {
    return failure(file, error.message());
  } catch (const FileError& error) {
    return failure(file, error.reason());
  } catch (const std::bad_alloc&) {
    return failure(file, QStringLiteral("the map is too large for the memory of this machine"));
  }
  return succeeded;
}

// Writes the map to a file or to standard output. Throws FileError or DocumentError.
void write(const MindMap& map, const QString& output) {
  if (output == standardStream)
    writeStandardOutput(encodeDocument(map));
  else
    writeMap(map, output);
}

// Reads INPUT, passes it to change(map), writes OUTPUT.
template <class Change>
int rewrite(const QString& input, const QString& output, Change&& change) {
  MindMap map;
  const int status =
      tryOn(input, [&] { map = change(input == standardStream ? readMapFrom(standardInput()) : readMap(input)); });
  return status == succeeded ? tryOn(output, [&] { write(map, output); }) : status;
}

int convert(const QStringList& arguments) {
  if (arguments.size() != 2) return wrong();
  return rewrite(arguments[0], arguments[1], [](MindMap map) { return map; });
}

// Removes "NAME VALUE" from the arguments and returns the value, or `usual` if the name is absent. Nothing if no value
// follows the name.
std::optional<QString> takeOption(QStringList& arguments, const QString& name, const QString& usual) {
  const qsizetype index = arguments.indexOf(name);
  if (index < 0) return usual;
  if (index + 1 == arguments.size()) return std::nullopt;
  const QString value = arguments[index + 1];
  arguments.remove(index, 2);
  return value;
}

// Removes "--size WxH" from the arguments. Nothing if it is present but invalid.
std::optional<QSizeF> takeSize(QStringList& arguments) {
  static const QRegularExpression form(QStringLiteral("\\A([1-9][0-9]{0,5})x([1-9][0-9]{0,5})\\z"));
  const auto text = takeOption(arguments, QStringLiteral("--size"), QStringLiteral("1200x800"));
  const auto match = form.match(text.value_or(QString()));
  if (!match.hasMatch()) return std::nullopt;
  return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble());
}

// One of the automatic layouts by its name.
std::optional<MindMap::Layout> layoutOf(const QString& name) {
  const auto layout = fromRawValue<MindMap::Layout>(name.toStdString());
  return layout == MindMap::Layout::manual ? std::nullopt : layout;
}

int layout(QStringList arguments) {
  const auto size = takeSize(arguments);
  if (!size || arguments.size() != 3) return wrong();
  const auto wanted = layoutOf(arguments[0]);
  if (!wanted) return wrong();
  return rewrite(arguments[1], arguments[2], [&](MindMap map) {
    ScriptEditor editor;
    editor.start(std::move(map));
    editor.editor().applyLayout(*wanted, *size);
    return editor.editor().mindMap();
  });
}

int generate(QStringList arguments) {
  const auto size = takeSize(arguments);
  const auto layoutName = takeOption(arguments, QStringLiteral("--layout"), QStringLiteral("radial"));
  const auto theme = takeOption(arguments, QStringLiteral("--theme"), QString());
  if (!size || !layoutName || !theme || arguments.size() != 2) return wrong();
  const auto wanted = layoutOf(*layoutName);
  if (!wanted) return wrong();
  const QString& output = arguments[1];
  return tryOn(output, [&] {
    const AITreeConverter converter{*size, *wanted, theme->isEmpty() ? std::nullopt : theme};
    write(converter.convert(generateTree(arguments[0]), MemorySettingsStore(), SystemClock()), output);
  });
}

int script(const QStringList& arguments) {
  if (!arguments.isEmpty()) return wrong();
  if (runScript()) return succeeded;
  std::fputs("quilmora-cli: standard output: the answers cannot be written\n", stderr);
  return failed;
}

}  // namespace

int runCommandLine(const QStringList& arguments) {
  const QString command = arguments.value(0);
  const QStringList rest = arguments.mid(1);
  if (command == QLatin1String("convert")) return convert(rest);
  if (command == QLatin1String("layout")) return layout(rest);
  if (command == QLatin1String("generate")) return generate(rest);
  if (command == QLatin1String("script")) return script(rest);
  if (command == QLatin1String("--version") && rest.isEmpty()) {
    std::puts("quilmora-cli " QUILMORA_VERSION);
    return succeeded;
  }
  if (command == QLatin1String("--help") || command == QLatin1String("-h")) {
    std::fputs(usage, stdout);
    return succeeded;
  }
  return wrong();
}

}  // namespace quilmora
