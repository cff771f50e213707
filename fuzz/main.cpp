// Random-operation harness for the grid: runs seeded sequences of public
// calls and real input, checks the grid after every step, and shrinks a
// failing sequence to a short reproduction printed as C++.

#include "fuzz/Harness.h"
#include "fuzz/Shrink.h"
#include "fuzz/Values.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>

#include <cstdio>
#include <iostream>
#include <map>

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TabulaFuzz {
namespace {

constexpr int CheckFailed = 3;

struct Options {
    uint64_t seed = 1;
    int64_t steps = 200;
    int64_t iterations = -1;
    double seconds = -1;
    bool keepGoing = false;
    bool printSteps = false;
    QString replayFile;
    QString picturesFile;
};

void usage()
{
    std::cerr << "tabula_fuzz [--seed N] [--steps N] [--seconds N] [--iterations N] [--keep-going]\n"
                 "  Runs random sequences of public calls and real input on fresh grids, one sequence per\n"
                 "  seed from --seed on, until --iterations sequences ran or --seconds passed (60 s when\n"
                 "  neither is given).\n"
                 "  --keep-going reports every distinct failure instead of stopping at the first.\n"
                 "  --pictures FILE writes a digest of the grid's picture after every step, one line per\n"
                 "  step (seed, step, digest, step): two builds that draw alike write the same file.\n"
                 "  --print-steps prints every sequence's steps as --replay reads them, after a line \"seed N\".\n"
                 "tabula_fuzz --replay FILE [--pictures FILE]\n"
                 "  Replays the steps in FILE (the lines a failure prints under \"steps for --replay\") and shrinks a failure.\n";
}

std::optional<Options> parse(const QStringList& args)
{
    Options o;
    // The options that take a value; each returns false on a bad one.
    const std::map<QString, std::function<bool(const QString&)>> valued{
        {"--seed", [&](const QString& v) { return o.seed = v.toULongLong(), true; }},
        {"--steps", [&](const QString& v) { return o.steps = v.toLongLong(), true; }},
        {"--iterations", [&](const QString& v) { return o.iterations = v.toLongLong(), true; }},
        {"--seconds", [&](const QString& v) { return o.seconds = v.toDouble(), true; }},
        {"--replay", [&](const QString& v) { return o.replayFile = v, true; }},
        {"--pictures", [&](const QString& v) { return o.picturesFile = v, true; }},
    };
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (const auto option = valued.find(arg); option != valued.end()) {
            if (!option->second(i + 1 < args.size() ? args[++i] : QString()))
                return std::nullopt;
        } else if (arg == QLatin1String("--print-steps")) {
            o.printSteps = true;
        } else if (arg == QLatin1String("--keep-going")) {
            o.keepGoing = true;
        } else {
            return std::nullopt;
        }
    }
    if (o.iterations < 0 && o.seconds < 0)
        o.seconds = 60;
    if (o.iterations < 0)
        o.iterations = INT64_MAX;
    if (o.seconds < 0)
        o.seconds = 1e12;
    return o;
}

void say(const QString& text)
{
    std::cout << text.toStdString() << std::endl;
}

// ---- Running sequences in child processes ---------------------------------

// Each sequence runs in a forked child of a process that never touched a grid,
// so every sequence starts from the same state, and a crash or a sanitizer
// report ends the child only: the parent still has the steps, which the child
// sends it before running each one.
void send(int fd, const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    for (qsizetype done = 0, n = 0; done < bytes.size(); done += n)
        if ((n = ::write(fd, bytes.constData() + done, static_cast<size_t>(bytes.size() - done))) <= 0)
            return;
}

// How often the steps reached the editor and the drop-down list, and how
// often a step raised a ComponentError: a rough measure of what a run covers.
struct Reach {
    int64_t editor = 0;
    int64_t list = 0;
    int64_t raised = 0;
};

void countReach(const Harness& harness, bool raised, Reach& reach)
{
    const QWidget* editor = harness.child("txtEdit");
    const QWidget* list = harness.child("ListForm");
    reach.editor += editor && editor->isVisible();
    reach.list += list && list->isVisible();
    reach.raised += raised;
}

// The picture's size and an MD5 of its pixels.
QString pictureDigest(const QImage& picture)
{
    const QByteArray bytes(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex();
    return QStringLiteral("%1x%2 %3").arg(picture.width()).arg(picture.height()).arg(QString::fromLatin1(digest));
}

bool tracePictures = false;

// Runs steps on a fresh grid, from the list and then, while more is asked
// for, drawn from rng; reports each step before it runs.
Verdict runSteps(int channel, const Sequence& given, Rng* rng, int64_t drawn)
{
    Harness harness;
    Reach reach;
    const auto total = static_cast<int64_t>(given.size()) + drawn;
    for (int64_t i = 0; i < total; ++i) {
        const Operation op = i < static_cast<int64_t>(given.size()) ? given[static_cast<size_t>(i)]
                             : i + 1 < total                         ? generate(*rng, harness)
                                                                     : restoreStep(*rng);
        send(channel, QStringLiteral("op ") + serialize(op));
        try {
            countReach(harness, checkedStep(harness, op), reach);
            // Reading the picture would make the pixels a chained step owes.
            if (tracePictures)
                send(channel, QStringLiteral("picture ") +
                                  (op.chained ? QStringLiteral("-") : pictureDigest(harness.grid().Picture())));
        } catch (const CheckFailure& failure) {
            return {QString::fromStdString(failure.what()), static_cast<size_t>(i), failure.detail};
        }
    }
    send(channel, QStringLiteral("reach %1 %2 %3").arg(reach.editor).arg(reach.list).arg(reach.raised));
    return {};
}

struct ChildResult {
    Sequence steps;
    Verdict verdict;
    QString errors;
    Reach reach;
    QStringList pictures;
};

// A sanitizer report or crash, reduced to what identifies its defect.
QString crashSignature(const QString& errors, int status)
{
    static const QRegularExpression ubsan(QStringLiteral(R"(([\w/.+-]+:\d+):\d+: runtime error: ([^:,]+))"));
    static const QRegularExpression asan(QStringLiteral(R"(ERROR: AddressSanitizer: ([\w-]+))"));
    static const QRegularExpression frame(QStringLiteral(
        R"(#\d+ 0x[0-9a-f]+ in \S+ (/\S+/(?:core|render|navigation|editing|lookups|platform|pages)/[\w.]+:\d+))"));
    static const QRegularExpression check(QStringLiteral(R"(([\w.]+:\d+): cache check failed)"));
    if (auto m = check.match(errors); m.hasMatch())
        return QStringLiteral("cache check failed at %1").arg(m.captured(1));
    if (auto m = ubsan.match(errors); m.hasMatch())
        return QStringLiteral("UBSan %1 at %2").arg(m.captured(2), m.captured(1).section(QLatin1Char('/'), -2));
    if (auto m = asan.match(errors); m.hasMatch()) {
        const auto f = frame.match(errors, m.capturedEnd());
        return QStringLiteral("ASan %1 in %2")
            .arg(m.captured(1), f.hasMatch() ? f.captured(1).section(QLatin1Char('/'), -2) : QStringLiteral("?"));
    }
    if (WIFSIGNALED(status))
        return QStringLiteral("crash: signal %1").arg(WTERMSIG(status));
    return QStringLiteral("crash: exit code %1").arg(WEXITSTATUS(status));
}

// Reads the child's report and its error output until both close or the
// deadline passes; returns false on timeout.
bool drain(int out, int err, QByteArray& report, QByteArray& errors, int timeoutSeconds)
{
    QElapsedTimer clock;
    clock.start();
    pollfd fds[2] = {{out, POLLIN, 0}, {err, POLLIN, 0}};
    QByteArray* sinks[2] = {&report, &errors};
    int open = 2;
    char buffer[65536];
    while (open > 0) {
        const qint64 left = timeoutSeconds * 1000LL - clock.elapsed();
        if (left <= 0 || ::poll(fds, 2, static_cast<int>(left)) < 0)
            return false;
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP | POLLERR)))
                continue;
            const ssize_t n = ::read(fds[i].fd, buffer, sizeof buffer);
            if (n > 0) {
                sinks[i]->append(buffer, n);
                continue;
            }
            fds[i].fd = -1;
            --open;
        }
    }
    return true;
}

ChildResult parseReport(const QByteArray& report)
{
    ChildResult result;
    for (const QByteArray& raw : report.split('\n')) {
        const QString line = QString::fromUtf8(raw);
        if (line.startsWith(QLatin1String("op "))) {
            if (auto op = deserialize(line.mid(3)))
                result.steps.push_back(*op);
        } else if (line.startsWith(QLatin1String("picture "))) {
            result.pictures.append(line.mid(8));
        } else if (line.startsWith(QLatin1String("reach "))) {
            const QStringList parts = line.split(QLatin1Char(' '));
            result.reach = {parts.value(1).toLongLong(), parts.value(2).toLongLong(), parts.value(3).toLongLong()};
        } else if (line.startsWith(QLatin1String("fail\t"))) {
            const QStringList parts = line.split(QLatin1Char('\t'));
            result.verdict = {parts.value(2), parts.value(1).toULongLong(), parts.value(3)};
        }
    }
    return result;
}

// The child's whole life: run, report, and leave without running exit
// handlers (the leak checker among them) of a process that forked.
[[noreturn]] void childMain(int out, const Sequence& given, uint64_t seed, int64_t drawn)
{
    Rng rng(seed);
    const Verdict verdict = runSteps(out, given, &rng, drawn);
    if (verdict.failed())
        send(out, QStringLiteral("fail\t%1\t%2\t%3").arg(verdict.failedAt).arg(verdict.signature, verdict.detail));
    ::_exit(0);
}

ChildResult inChild(const Sequence& given, uint64_t seed, int64_t drawn, int timeoutSeconds)
{
    int out[2];
    int err[2];
    if (::pipe(out) != 0 || ::pipe(err) != 0)
        std::abort();
    std::cout.flush();
    std::fflush(nullptr);
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(out[0]);
        ::close(err[0]);
        ::dup2(err[1], STDERR_FILENO);
        childMain(out[1], given, seed, drawn);
    }
    ::close(out[1]);
    ::close(err[1]);
    QByteArray report;
    QByteArray errors;
    const bool finished = drain(out[0], err[0], report, errors, timeoutSeconds);
    if (!finished)
        ::kill(pid, SIGKILL);
    int status = 0;
    ::waitpid(pid, &status, 0);
    ::close(out[0]);
    ::close(err[0]);
    ChildResult result = parseReport(report);
    result.errors = QString::fromUtf8(errors);
    const bool clean = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (!finished)
        result.verdict = {QStringLiteral("hang: no end after %1 s").arg(timeoutSeconds), result.steps.size() - 1, QString()};
    else if (!clean)
        result.verdict = {crashSignature(result.errors, status), result.steps.size() - 1, QString()};
    return result;
}

Verdict replay(const Sequence& steps) { return inChild(steps, 0, 0, 120).verdict; }

// ---- Reporting ------------------------------------------------------------

void report(const ChildResult& failed, uint64_t seed)
{
    const QString& signature = failed.verdict.signature;
    say(QStringLiteral("FAILED seed %1 at step %2: %3").arg(seed).arg(failed.steps.size()).arg(signature));
    if (!failed.errors.isEmpty())
        say(failed.errors.left(4000));
    const Sequence shrunk = shrink(failed.steps, signature, replay, 1500);
    Verdict verdict = replay(shrunk);
    if (verdict.signature != signature)
        verdict = {signature, shrunk.size() - 1, QString()};
    say(QStringLiteral("---- reproduction ----\n%1\n---- steps for --replay ----")
            .arg(reproduction(shrunk, verdict, seed, failed.steps.size())));
    for (const Operation& op : shrunk)
        say(serialize(op));
    say(QStringLiteral("----------------------"));
}

Sequence readSteps(const QString& path)
{
    QFile file(path);
    Sequence steps;
    if (!file.open(QIODevice::ReadOnly))
        return steps;
    QTextStream in(&file);
    while (!in.atEnd())
        if (auto op = deserialize(in.readLine()))
            steps.push_back(*op);
    return steps;
}

// One line a step: seed, step, the picture's digest after it, the step.
void writePictures(QTextStream& out, uint64_t seed, const ChildResult& result)
{
    for (qsizetype i = 0; i < result.pictures.size(); ++i) {
        out << seed << ' ' << i << ' ' << result.pictures[i];
        if (i < static_cast<qsizetype>(result.steps.size()))
            out << ' ' << serialize(result.steps[static_cast<size_t>(i)]);
        out << '\n';
    }
}

int replayMain(const Options& o)
{
    const ChildResult result = inChild(readSteps(o.replayFile), 0, 0, 600);
    QFile pictures(o.picturesFile);
    if (!o.picturesFile.isEmpty() && pictures.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        QTextStream pictureLines(&pictures);
        writePictures(pictureLines, 0, result);
    }
    if (!result.verdict.failed()) {
        say(QStringLiteral("all %1 steps passed").arg(result.steps.size()));
        return 0;
    }
    report(result, 0);
    return CheckFailed;
}

QString percentOf(int64_t part, int64_t whole)
{
    return QString::number(whole ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0.0, 'f', 1) +
           QLatin1Char('%');
}

int fuzzMain(const Options& o)
{
    QElapsedTimer clock;
    clock.start();
    QSet<QString> seen;
    QFile pictures(o.picturesFile);
    if (!o.picturesFile.isEmpty() && !pictures.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        say(QStringLiteral("cannot write %1").arg(o.picturesFile));
        return 2;
    }
    QTextStream pictureLines(&pictures);
    int64_t steps = 0;
    Reach reach;
    int64_t iteration = 0;
    for (; iteration < o.iterations && clock.elapsed() < o.seconds * 1000; ++iteration) {
        const uint64_t seed = o.seed + static_cast<uint64_t>(iteration);
        const ChildResult result = inChild({}, seed, o.steps + 1, 300);
        steps += static_cast<int64_t>(result.steps.size());
        writePictures(pictureLines, seed, result);
        if (o.printSteps) {
            say(QStringLiteral("seed %1").arg(seed));
            for (const Operation& op : result.steps)
                say(serialize(op));
        }
        reach = {reach.editor + result.reach.editor, reach.list + result.reach.list, reach.raised + result.reach.raised};
        if (!result.verdict.failed() || seen.contains(result.verdict.signature))
            continue;
        seen.insert(result.verdict.signature);
        report(result, seed);
        if (!o.keepGoing)
            break;
    }
    say(QStringLiteral("ran %1 sequences (seeds %2..%3), %4 steps in %5 s, %6 distinct failures; "
                       "after the steps the editor was open %7, the drop-down list %8; %9 raised a ComponentError")
            .arg(iteration)
            .arg(o.seed)
            .arg(o.seed + static_cast<uint64_t>(iteration) - 1)
            .arg(steps)
            .arg(clock.elapsed() / 1000.0, 0, 'f', 1)
            .arg(seen.size())
            .arg(percentOf(reach.editor, steps), percentOf(reach.list, steps), percentOf(reach.raised, steps)));
    return seen.isEmpty() ? 0 : CheckFailed;
}

void quietMessages(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg) {
        std::cerr << message.toStdString() << std::endl;
        std::abort();
    }
}

}  // namespace
}  // namespace TabulaFuzz

int main(int argc, char** argv)
{
    using namespace TabulaFuzz;
    QStringList args;
    for (int i = 0; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    const auto options = parse(args);
    if (!options) {
        usage();
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quietMessages);
    QApplication app(argc, argv);
    tracePictures = !options->picturesFile.isEmpty();
    return options->replayFile.isEmpty() ? fuzzMain(*options) : replayMain(*options);
}
