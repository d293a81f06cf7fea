#include "cli/CommandLine.h"

#include <cstdio>
#include <new>

#include <QRegularExpression>

#include "exchange/MapImport.h"
#include "model/MindMapDocument.h"
#include "script/MapFiles.h"
#include "script/ScriptEditor.h"
#include "script/ScriptRunner.h"

namespace quilmora {

namespace {

enum ExitStatus { succeeded = 0, failed = 1, wrongUsage = 2 };

const QString standardStream = QStringLiteral("-");
constexpr QSizeF defaultSize(1200.0, 800.0);

constexpr char usage[] =
    "usage: quilmora-cli convert INPUT OUTPUT\n"
    "       quilmora-cli layout LAYOUT INPUT OUTPUT [--size WxH]\n"
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
    "script answers JSON lines on standard input with JSON lines on standard output.\n";

int wrong() {
  std::fputs(usage, stderr);
  return wrongUsage;
}

// One line, whatever a file's name or a damaged document put into the reason.
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

// Reads INPUT, lets change(map) have it, writes OUTPUT.
template <class Change>
int rewrite(const QString& input, const QString& output, Change&& change) {
  static const QString noMemory = QStringLiteral("the map is too large for the memory of this machine");
  MindMap map;
  try {
    map = change(input == standardStream ? readMapFrom(standardInput()) : readMap(input));
  } catch (const FileError& error) {
    return failure(input, error.reason());
  } catch (const std::bad_alloc&) {
    return failure(input, noMemory);
  }
  try {
    if (output == standardStream)
      writeStandardOutput(encodeDocument(map));
    else
      writeMap(map, output);
  } catch (const DocumentError& error) {
    return failure(output, error.message());
  } catch (const FileError& error) {
    return failure(output, error.reason());
  } catch (const std::bad_alloc&) {
    return failure(output, noMemory);
  }
  return succeeded;
}

int convert(const QStringList& arguments) {
  if (arguments.size() != 2) return wrong();
  return rewrite(arguments[0], arguments[1], [](MindMap map) { return map; });
}

// Takes "--size WxH" out of the arguments. Nothing when it is there and wrong.
std::optional<QSizeF> takeSize(QStringList& arguments) {
  const qsizetype place = arguments.indexOf(QStringLiteral("--size"));
  if (place < 0) return defaultSize;
  static const QRegularExpression form(QStringLiteral("\\A([1-9][0-9]{0,5})x([1-9][0-9]{0,5})\\z"));
  const auto match = form.match(arguments.value(place + 1));
  if (!match.hasMatch()) return std::nullopt;
  arguments.remove(place, 2);
  return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble());
}

int layout(QStringList arguments) {
  const auto size = takeSize(arguments);
  if (!size || arguments.size() != 3) return wrong();
  const auto wanted = fromRawValue<MindMap::Layout>(arguments[0].toStdString());
  if (!wanted || *wanted == MindMap::Layout::manual) return wrong();
  return rewrite(arguments[1], arguments[2], [&](MindMap map) {
    ScriptEditor editor;
    editor.start(std::move(map));
    editor.editor().applyLayout(*wanted, *size);
    return editor.editor().mindMap();
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
