#include "run_picture_page.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <vector>

namespace {

// ---- Reading ----------------------------------------------------------------------------

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::string part;
  std::istringstream in(text);
  while (std::getline(in, part, separator))
    parts.push_back(part);
  return parts;
}

std::vector<std::string> Words(const std::string& line) {
  std::vector<std::string> words;
  std::istringstream in(line);
  for (std::string word; in >> word;)
    words.push_back(word);
  return words;
}

std::string Trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// A finite number that is the whole of `text`.
bool Number(const std::string& text, double& value) {
  const std::string trimmed = Trimmed(text);
  char* end = nullptr;
  value = std::strtod(trimmed.c_str(), &end);
  return !trimmed.empty() && *end == '\0' && std::isfinite(value);
}

// Converts words[from, from + count) to numbers; false if one isn't.
bool Numbers(const std::vector<std::string>& words, size_t from, size_t count,
             std::vector<double>& values) {
  values.resize(count);
  for (size_t i = 0; i < count; ++i) {
    if (!Number(words[from + i], values[i])) return false;
  }
  return true;
}

std::string Joined(const std::vector<std::string>& words, size_t from, size_t to,
                   const char* separator) {
  std::string joined;
  for (size_t i = from; i < to; ++i)
    joined += (i > from ? separator : "") + words[i];
  return Trimmed(joined);
}

// One mark of the resource log: seconds and MiB.
struct Sample {
  double wall, user, system, peakWorkingSet, workingSet;
  std::string mark;
};

struct ResourceLog {
  std::vector<std::string> notes;  // the header and the timer summary, as written
  std::vector<Sample> samples;
  bool inKilobytes = false;
  int skipped = 0;
};

// The columns behind the mark text: UserCPU, SysCPU, WSP, WS, CPU, four quota pools, page
// faults, page file, three zeros and the process id.
constexpr size_t kTrailingColumns = 15;

ResourceLog ReadResourceLog(const std::string& text) {
  ResourceLog log;
  const std::vector<std::string> lines = Split(text, '\n');
  // The titles come at the end of a finished log; a killed run's log has none, and a Unix
  // time column then shows by its size.
  bool titled = false, unixTime = false;
  for (const std::string& line : lines) {
    if (line.rfind("!Phase,", 0) == 0) {
      titled = true;
      unixTime = line.rfind("!Phase,UnixTime,", 0) == 0;
    }
  }
  std::vector<double> trailing;
  for (const std::string& line : lines) {
    if (line.empty()) continue;
    if (line[0] == '!') {
      if (line.rfind("!Phase,", 0) != 0) log.notes.push_back(line);
      continue;
    }
    const std::vector<std::string> words = Words(line);
    double first = 0, wall = 0;
    const bool hasUnixTime =
        titled ? unixTime : words.size() > 2 && Number(words[1], first) && first > 1e8;
    const size_t wallAt = hasUnixTime ? 2 : 1;
    if (words.size() < wallAt + 1 + kTrailingColumns || !Number(words[wallAt], wall) ||
        !Numbers(words, words.size() - kTrailingColumns, kTrailingColumns, trailing)) {
      ++log.skipped;
      continue;
    }
    log.samples.push_back({wall, trailing[0], trailing[1], trailing[2], trailing[3],
                           Joined(words, wallAt + 1, words.size() - kTrailingColumns, " ")});
  }
  // Sizes are bytes, or KiB when the run asked for them: no process lives in less than a MiB.
  double largest = 0;
  for (const Sample& sample : log.samples)
    largest = std::max(largest, sample.peakWorkingSet);
  log.inKilobytes = largest > 0 && largest < 1048576;
  const double toMiB = log.inKilobytes ? 1.0 / 1024 : 1.0 / 1048576;
  for (Sample& sample : log.samples) {
    sample.peakWorkingSet *= toMiB;
    sample.workingSet *= toMiB;
  }
  return log;
}

// One row of the ioTotal report: its mark (or its time) and the megabytes so far.
struct IoRow {
  std::string label;
  double workWrite, workRead, scratchWrite, scratchRead;
};

struct IoTotals {
  std::vector<IoRow> rows;
  int skipped = 0;
};

// The numbers of a row: elapsed time, then count, megabytes and time for work write, work
// read, scratch write and scratch read.
constexpr size_t kIoNumbers = 13;

IoTotals ReadIoTotals(const std::string& text) {
  IoTotals totals;
  const std::vector<std::string> lines = Split(text, '\n');
  std::vector<double> values;
  for (size_t n = 2; n < lines.size(); ++n) {
    if (Trimmed(lines[n]).empty()) continue;
    const std::vector<std::string> fields = Split(lines[n], ',');
    if (fields.size() < kIoNumbers ||
        !Numbers(fields, fields.size() - kIoNumbers, kIoNumbers, values)) {
      ++totals.skipped;
      continue;
    }
    // A mark text may hold commas of its own: it is everything before the numbers.
    std::string label = Joined(fields, 0, fields.size() - kIoNumbers, ",");
    char time[32];
    std::snprintf(time, sizeof time, "%.1f s", values[0]);
    label = label.empty() ? time : label + " (" + time + ")";
    totals.rows.push_back({label, values[2], values[5], values[8], values[11]});
  }
  return totals;
}

// ---- Drawing ----------------------------------------------------------------------------

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Format(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// A tick step of 1, 2 or 5 times a power of ten that gives about five ticks up to `top`.
double TickStep(double top) {
  if (!(top > 0)) return 1;
  const double raw = top / 5;
  const double power = std::pow(10, std::floor(std::log10(raw)));
  for (double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= raw) return factor * power;
  }
  return 10 * power;
}

// The plot area of a chart and its value scales.
struct Frame {
  static constexpr double kWidth = 1000, kLeft = 120, kRight = 20, kTop = 40;
  double height, bottom;  // the whole height and the room under the plot for labels
  double xMax, yMax;

  double PlotWidth() const { return kWidth - kLeft - kRight; }
  double PlotBottom() const { return height - bottom; }
  double X(double value) const { return kLeft + value / xMax * PlotWidth(); }
  double Y(double value) const { return PlotBottom() - value / yMax * (PlotBottom() - kTop); }
};

struct Series {
  std::string name, color;
  std::vector<double> values;
};

std::string Open(const Frame& frame, const std::string& title) {
  return "<h2>" + Escaped(title) + "</h2>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
         Format("%.0f", Frame::kWidth) + "\" height=\"" + Format("%.0f", frame.height) +
         "\" font-family=\"sans-serif\" font-size=\"11\">\n";
}

// The value axis with its grid, its unit, and the legend above the plot.
std::string Axes(const Frame& frame, const std::string& unit, const std::vector<Series>& series) {
  std::string svg;
  const double step = TickStep(frame.yMax);
  for (double value = 0; value <= frame.yMax * (1 + 1e-9); value += step) {
    const std::string y = Format("%.1f", frame.Y(value));
    svg += "<line x1=\"" + Format("%.0f", Frame::kLeft) + "\" x2=\"" +
           Format("%.0f", Frame::kWidth - Frame::kRight) + "\" y1=\"" + y + "\" y2=\"" + y +
           "\" stroke=\"#ddd\"/><text x=\"" + Format("%.0f", Frame::kLeft - 6) + "\" y=\"" + y +
           "\" text-anchor=\"end\" dy=\"4\">" + Format("%g", value) + "</text>\n";
  }
  svg += "<text x=\"10\" y=\"" + Format("%.0f", Frame::kTop - 14) + "\">" + Escaped(unit) +
         "</text>\n";
  double x = Frame::kLeft + 60;
  for (const Series& one : series) {
    svg += "<rect x=\"" + Format("%.0f", x) + "\" y=\"" + Format("%.0f", Frame::kTop - 24) +
           "\" width=\"12\" height=\"12\" fill=\"" + one.color + "\"/><text x=\"" +
           Format("%.0f", x + 16) + "\" y=\"" + Format("%.0f", Frame::kTop - 14) + "\">" +
           Escaped(one.name) + "</text>\n";
    x += 30 + 7 * static_cast<double>(one.name.size());
  }
  return svg;
}

// A label under the plot at `x`, turned to run down and to the left.
std::string UnderLabel(const Frame& frame, double x, const std::string& text) {
  const std::string at = Format("%.1f", x) + "," + Format("%.1f", frame.PlotBottom() + 16);
  return "<text transform=\"translate(" + at + ") rotate(-50)\" text-anchor=\"end\">" +
         Escaped(text) + "</text>\n";
}

double Largest(const std::vector<Series>& series) {
  double largest = 0;
  for (const Series& one : series)
    for (double value : one.values)
      largest = std::max(largest, value);
  return largest > 0 ? largest * 1.05 : 1;
}

// Where the labels of marks at `xs` (in increasing order) go: at their mark, but at least a
// line apart, and pushed back from the right edge so that all fit.
std::vector<double> Spread(const std::vector<double>& xs) {
  constexpr double kApart = 13;
  std::vector<double> at(xs);
  for (size_t i = 1; i < at.size(); ++i)
    at[i] = std::max(at[i], at[i - 1] + kApart);
  const double right = Frame::kWidth - Frame::kRight;
  for (size_t i = at.size(); i-- > 0;)
    at[i] = std::min(at[i], right - kApart * static_cast<double>(at.size() - 1 - i));
  return at;
}

// Lines of values against wall time, with each mark's text under the time axis, joined to its
// time by a short leader where marks crowd together.
std::string LineChart(const std::string& title, const std::string& unit,
                      const std::vector<Series>& series, const std::vector<Sample>& samples) {
  double lastTime = 0;
  for (const Sample& sample : samples)
    lastTime = std::max(lastTime, sample.wall);
  const Frame frame{480, 200, lastTime > 0 ? lastTime : 1, Largest(series)};
  std::string svg = Open(frame, title) + Axes(frame, unit, series);
  std::vector<double> xs;
  for (const Sample& sample : samples)
    xs.push_back(frame.X(sample.wall));
  const std::vector<double> labels = Spread(xs);
  const std::string axis = Format("%.1f", frame.PlotBottom());
  for (size_t i = 0; i < samples.size(); ++i) {
    const std::string x = Format("%.1f", xs[i]);
    svg += "<line x1=\"" + x + "\" x2=\"" + x + "\" y1=\"" + Format("%.0f", Frame::kTop) +
           "\" y2=\"" + axis + "\" stroke=\"#ccc\" stroke-dasharray=\"3,3\"/>\n<line x1=\"" + x +
           "\" y1=\"" + axis + "\" x2=\"" + Format("%.1f", labels[i]) + "\" y2=\"" +
           Format("%.1f", frame.PlotBottom() + 10) + "\" stroke=\"#999\"/>\n" +
           UnderLabel(frame, labels[i] + 3,
                      samples[i].mark + "  " + Format("%.1f s", samples[i].wall));
  }
  for (const Series& one : series) {
    std::string points, dots;
    for (size_t i = 0; i < one.values.size() && i < samples.size(); ++i) {
      const std::string x = Format("%.1f", xs[i]), y = Format("%.1f", frame.Y(one.values[i]));
      points += x + "," + y + " ";
      dots += "<circle cx=\"" + x + "\" cy=\"" + y + "\" r=\"2.5\" fill=\"" + one.color + "\"/>";
    }
    svg += "<polyline fill=\"none\" stroke-width=\"2\" stroke=\"" + one.color + "\" points=\"" +
           points + "\"/>\n" + dots + "\n";
  }
  return svg + "</svg>\n";
}

// Groups of bars, one group per row of the ioTotal report.
std::string BarChart(const std::string& title, const std::vector<Series>& series,
                     const std::vector<std::string>& labels) {
  const Frame frame{480, 200, 1, Largest(series)};
  std::string svg = Open(frame, title) + Axes(frame, "MB", series);
  const double group = frame.PlotWidth() / static_cast<double>(std::max<size_t>(labels.size(), 1));
  const double bar = group * 0.8 / static_cast<double>(series.size());
  for (size_t row = 0; row < labels.size(); ++row) {
    const double left = Frame::kLeft + group * static_cast<double>(row) + group * 0.1;
    for (size_t s = 0; s < series.size(); ++s) {
      const double value = series[s].values[row];
      svg += "<rect x=\"" + Format("%.1f", left + bar * static_cast<double>(s)) + "\" y=\"" +
             Format("%.1f", frame.Y(value)) + "\" width=\"" + Format("%.1f", bar) + "\" height=\"" +
             Format("%.1f", frame.PlotBottom() - frame.Y(value)) + "\" fill=\"" + series[s].color +
             "\"><title>" + Escaped(series[s].name) + ": " + Format("%.3f MB", value) +
             "</title></rect>\n";
    }
    svg += UnderLabel(frame, left + group * 0.4, labels[row]);
  }
  return svg + "</svg>\n";
}

std::string MemoryAndCpu(const ResourceLog& log) {
  Series peak{"peak working set", "#d62728", {}}, present{"working set", "#1f77b4", {}};
  Series user{"user", "#2ca02c", {}}, system{"system", "#9467bd", {}},
      total{"user + system", "#ff7f0e", {}};
  for (const Sample& sample : log.samples) {
    peak.values.push_back(sample.peakWorkingSet);
    present.values.push_back(sample.workingSet);
    user.values.push_back(sample.user);
    system.values.push_back(sample.system);
    total.values.push_back(sample.user + sample.system);
  }
  return LineChart("Memory against wall time", "MiB", {peak, present}, log.samples) +
         LineChart("CPU time against wall time", "seconds", {total, user, system}, log.samples);
}

std::string InputOutput(const IoTotals& totals) {
  Series workWrite{"work write", "#1f77b4", {}}, workRead{"work read", "#aec7e8", {}};
  Series scratchWrite{"scratch write", "#ff7f0e", {}}, scratchRead{"scratch read", "#ffbb78", {}};
  std::vector<std::string> labels;
  for (const IoRow& row : totals.rows) {
    workWrite.values.push_back(row.workWrite);
    workRead.values.push_back(row.workRead);
    scratchWrite.values.push_back(row.scratchWrite);
    scratchRead.values.push_back(row.scratchRead);
    labels.push_back(row.label);
  }
  return BarChart("I/O totals at each mark", {workWrite, workRead, scratchWrite, scratchRead},
                  labels);
}

}  // namespace

std::string RunPicturePage(const std::string& resourceLog, const std::string& ioTotal,
                           const std::string& title) {
  const ResourceLog log = ReadResourceLog(resourceLog);
  const IoTotals totals = ReadIoTotals(ioTotal);
  std::string page =
      "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + Escaped(title) +
      "</title>\n<style>body{font-family:sans-serif;margin:24px;color:#222}"
      "h2{font-size:16px;margin:28px 0 4px}pre{background:#f6f6f6;padding:8px}</style>"
      "</head><body>\n<h1>" +
      Escaped(title) + "</h1>\n";
  page += "<pre>";
  for (const std::string& note : log.notes)
    page += Escaped(note) + "\n";
  page += "</pre>\n";
  if (log.samples.empty()) {
    page += "<p>The resource log holds no marks.</p>\n";
  } else {
    page += MemoryAndCpu(log);
    if (log.inKilobytes) page += "<p>The log gives its sizes in KiB.</p>\n";
  }
  if (!totals.rows.empty()) page += InputOutput(totals);
  if (log.skipped + totals.skipped > 0)
    page +=
        "<p>Lines not understood and left out: " + std::to_string(log.skipped + totals.skipped) +
        ".</p>\n";
  return page + "</body></html>\n";
}
