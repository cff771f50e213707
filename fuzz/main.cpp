// Random-operation harness for the grid. Without --worker or --replay it
// supervises: it runs the sequences in a worker process, so that a crash or a
// sanitizer report still leaves the steps that led to it, and shrinks such a
// failure by replaying candidate sequences in fresh processes. Failures of the
// checks themselves are shrunk inside the worker.

#include "fuzz/Harness.h"
#include "fuzz/Shrink.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>
#include <iostream>

namespace TabulaFuzz {
namespace {

constexpr int CheckFailed = 3;

struct Options {
    uint64_t seed = 1;
    int64_t steps = 200;
    int64_t iterations = 1000000000;
    double seconds = 60;
    bool keepGoing = false;
    bool worker = false;
    QString log;
    QString replayFile;
};

void usage()
{
    std::cerr << "tabula_fuzz [--seed N] [--steps N] [--seconds N] [--iterations N] [--keep-going]\n"
                 "  Runs random sequences of public calls and real input on fresh grids, one sequence per\n"
                 "  seed from --seed on, until --iterations sequences ran or --seconds passed.\n"
                 "tabula_fuzz --replay FILE\n"
                 "  Replays the steps saved in FILE and reports the first failed check.\n";
}

std::optional<Options> parse(const QStringList& args)
{
    Options o;
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& arg = args[i];
        const QString value = i + 1 < args.size() ? args[i + 1] : QString();
        bool used = true;
        if (arg == QLatin1String("--seed"))
            o.seed = value.toULongLong();
        else if (arg == QLatin1String("--steps"))
            o.steps = value.toLongLong();
        else if (arg == QLatin1String("--iterations"))
            o.iterations = value.toLongLong();
        else if (arg == QLatin1String("--seconds"))
            o.seconds = value.toDouble();
        else if (arg == QLatin1String("--log"))
            o.log = value;
        else if (arg == QLatin1String("--replay"))
            o.replayFile = value;
        else
            used = false;
        if (used) {
            ++i;
            continue;
        }
        if (arg == QLatin1String("--keep-going"))
            o.keepGoing = true;
        else if (arg == QLatin1String("--worker"))
            o.worker = true;
        else
            return std::nullopt;
    }
    return o;
}

void say(const QString& text)
{
    std::cout << text.toStdString() << std::endl;
}

// ---- Replaying ----------------------------------------------------------

Verdict replayHere(const Sequence& steps)
{
    Harness harness;
    for (size_t i = 0; i < steps.size(); ++i) {
        try {
            checkedStep(harness, steps[i]);
        } catch (const CheckFailure& failure) {
            return {QString::fromStdString(failure.what()), i, failure.detail};
        }
    }
    return {};
}

Sequence readSteps(const QString& path, uint64_t* seed)
{
    QFile file(path);
    Sequence steps;
    if (!file.open(QIODevice::ReadOnly))
        return steps;
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine();
        if (line.startsWith(QLatin1String("seed ")) && seed)
            *seed = line.mid(5).toULongLong();
        else if (auto op = deserialize(line))
            steps.push_back(*op);
    }
    return steps;
}

bool writeSteps(const QString& path, const Sequence& steps)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QTextStream out(&file);
    for (const Operation& op : steps)
        out << serialize(op) << '\n';
    return true;
}

int replayMain(const Options& o)
{
    const Verdict verdict = replayHere(readSteps(o.replayFile, nullptr));
    if (!verdict.failed())
        return 0;
    say(QStringLiteral("FAIL %1 %2").arg(verdict.failedAt).arg(verdict.signature));
    return CheckFailed;
}

// ---- The worker -----------------------------------------------------------

// Keeps the steps of the running sequence in a file, written before each step
// runs, so that they survive a crash.
class StepLog {
public:
    explicit StepLog(const QString& path) : file_(path) {}
    void begin(uint64_t seed)
    {
        if (file_.fileName().isEmpty())
            return;
        file_.close();
        file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
        file_.write(QStringLiteral("seed %1\n").arg(seed).toUtf8());
    }
    void add(const Operation& op)
    {
        if (file_.isOpen())
            file_.write((serialize(op) + QLatin1Char('\n')).toUtf8());
    }

private:
    QFile file_;
};

void report(const Sequence& steps, const QString& signature, uint64_t seed, const Replay& replay, int budget)
{
    say(QStringLiteral("FAILED seed %1 at step %2: %3").arg(seed).arg(steps.size()).arg(signature));
    const Sequence shrunk = shrink(steps, signature, replay, budget);
    Verdict verdict = replay(shrunk);
    if (verdict.signature != signature)
        verdict = {signature, shrunk.size() - 1, QString()};
    say(QStringLiteral("---- reproduction ----\n%1\n----------------------").arg(reproduction(shrunk, verdict, seed, steps.size())));
}

// Runs one sequence; returns the failed check, if any, with the steps so far.
Verdict runSequence(uint64_t seed, int64_t length, StepLog& log, Sequence& steps, int64_t& done)
{
    Harness harness;
    Rng rng(seed);
    log.begin(seed);
    for (int64_t i = 0; i <= length; ++i) {
        steps.push_back(i < length ? generate(rng, harness) : restoreStep(rng));
        log.add(steps.back());
        ++done;
        try {
            checkedStep(harness, steps.back());
        } catch (const CheckFailure& failure) {
            return {QString::fromStdString(failure.what()), steps.size() - 1, failure.detail};
        }
    }
    return {};
}

int workerMain(const Options& o)
{
    StepLog log(o.log);
    QElapsedTimer clock;
    clock.start();
    QSet<QString> seen;
    int64_t steps = 0;
    int failures = 0;
    int64_t iteration = 0;
    for (; iteration < o.iterations && clock.elapsed() < o.seconds * 1000; ++iteration) {
        const uint64_t seed = o.seed + static_cast<uint64_t>(iteration);
        Sequence sequence;
        const Verdict verdict = runSequence(seed, o.steps, log, sequence, steps);
        if (!verdict.failed() || seen.contains(verdict.signature))
            continue;
        seen.insert(verdict.signature);
        ++failures;
        report(sequence, verdict.signature, seed, replayHere, 3000);
        if (!o.keepGoing)
            return CheckFailed;
    }
    say(QStringLiteral("ran %1 sequences (seeds %2..%3), %4 steps in %5 s, %6 distinct failures")
            .arg(iteration)
            .arg(o.seed)
            .arg(o.seed + static_cast<uint64_t>(iteration) - 1)
            .arg(steps)
            .arg(clock.elapsed() / 1000.0, 0, 'f', 1)
            .arg(failures));
    return failures ? CheckFailed : 0;
}

// ---- The supervisor -------------------------------------------------------

// A sanitizer report or crash, reduced to what identifies its defect.
QString crashSignature(const QString& errors, int exitCode)
{
    static const QRegularExpression ubsan(QStringLiteral(R"(([\w/.+-]+:\d+):\d+: runtime error: ([^:,]+))"));
    static const QRegularExpression asan(QStringLiteral(R"(ERROR: AddressSanitizer: ([\w-]+))"));
    static const QRegularExpression frame(QStringLiteral(R"(#\d+ 0x[0-9a-f]+ in (\S+) (/\S+/(?:core|render|navigation|editing|lookups|platform|pages)/[\w.]+:\d+))"));
    if (auto m = ubsan.match(errors); m.hasMatch())
        return QStringLiteral("UBSan %1 at %2").arg(m.captured(2), m.captured(1).section(QLatin1Char('/'), -2));
    if (auto m = asan.match(errors); m.hasMatch()) {
        const auto f = frame.match(errors, m.capturedEnd());
        return QStringLiteral("ASan %1 in %2").arg(m.captured(1), f.hasMatch() ? f.captured(2).section(QLatin1Char('/'), -2) : QStringLiteral("?"));
    }
    return QStringLiteral("crash with exit code %1").arg(exitCode);
}

struct Outcome {
    int exitCode = 0;
    bool crashed = false;
    QString errors;
};

Outcome runChild(const QStringList& args, int timeoutSeconds, bool forwardOutput)
{
    QProcess child;
    child.setProcessChannelMode(forwardOutput ? QProcess::ForwardedOutputChannel : QProcess::SeparateChannels);
    child.start(QCoreApplication::applicationFilePath(), args);
    const bool finished = child.waitForFinished(timeoutSeconds * 1000);
    if (!finished) {
        child.kill();
        child.waitForFinished();
        return {-1, true, QStringLiteral("hang: no end after %1 s").arg(timeoutSeconds)};
    }
    const QString errors = QString::fromUtf8(child.readAllStandardError());
    if (!forwardOutput && child.exitCode() == CheckFailed)
        return {CheckFailed, false, QString::fromUtf8(child.readAllStandardOutput())};
    const bool crashed = child.exitStatus() == QProcess::CrashExit || (child.exitCode() != 0 && child.exitCode() != CheckFailed);
    return {child.exitStatus() == QProcess::CrashExit ? -1 : child.exitCode(), crashed, errors};
}

Verdict replayInChild(const Sequence& steps, const QString& file)
{
    writeSteps(file, steps);
    const Outcome outcome = runChild({QStringLiteral("--replay"), file}, 120, false);
    if (outcome.exitCode == CheckFailed) {
        static const QRegularExpression fail(QStringLiteral(R"(FAIL (\d+) (.*))"));
        const auto m = fail.match(outcome.errors);
        return {m.captured(2).trimmed(), m.captured(1).toULongLong(), QString()};
    }
    if (!outcome.crashed)
        return {};
    return {outcome.errors.startsWith(QLatin1String("hang")) ? outcome.errors : crashSignature(outcome.errors, outcome.exitCode),
            steps.size() - 1, QString()};
}

QStringList workerArgs(const Options& o, uint64_t seed, int64_t iterations, double seconds, const QString& log)
{
    QStringList args{QStringLiteral("--worker"), QStringLiteral("--seed"), QString::number(seed),
                     QStringLiteral("--steps"), QString::number(o.steps), QStringLiteral("--iterations"),
                     QString::number(iterations), QStringLiteral("--seconds"), QString::number(seconds),
                     QStringLiteral("--log"), log};
    if (o.keepGoing)
        args << QStringLiteral("--keep-going");
    return args;
}

int supervise(const Options& o)
{
    QTemporaryDir dir;
    const QString log = dir.filePath(QStringLiteral("steps.log"));
    const QString candidate = dir.filePath(QStringLiteral("candidate.log"));
    QElapsedTimer clock;
    clock.start();
    uint64_t seed = o.seed;
    bool failed = false;
    QSet<QString> seen;
    while (true) {
        const double left = o.seconds - clock.elapsed() / 1000.0;
        const int64_t iterations = o.iterations - static_cast<int64_t>(seed - o.seed);
        if (left <= 0 || iterations <= 0)
            break;
        const Outcome outcome = runChild(workerArgs(o, seed, iterations, left, log), static_cast<int>(left) + 300, true);
        failed = failed || outcome.exitCode != 0;
        if (!outcome.crashed)
            break;
        std::cerr << outcome.errors.toStdString();
        uint64_t crashedSeed = seed;
        const Sequence steps = readSteps(log, &crashedSeed);
        const QString signature = outcome.errors.startsWith(QLatin1String("hang")) ? outcome.errors
                                                                                    : crashSignature(outcome.errors, outcome.exitCode);
        if (!seen.contains(signature)) {
            seen.insert(signature);
            report(steps, signature, crashedSeed, [&](const Sequence& s) { return replayInChild(s, candidate); }, 400);
        }
        if (!o.keepGoing)
            break;
        seed = crashedSeed + 1;
    }
    return failed ? 1 : 0;
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
    if (!options->worker && options->replayFile.isEmpty()) {
        QCoreApplication app(argc, argv);
        return supervise(*options);
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quietMessages);
    QApplication app(argc, argv);
    return options->worker ? workerMain(*options) : replayMain(*options);
}
