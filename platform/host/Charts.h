// Charts: a template of the host with named places, filled with texts and with a data set, becomes an item of
// the command's output.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Visibility.h"

struct BAYES_PLATFORM PathFactory {
  // Kind 3: the folder of the chart templates.
  static std::string getPathInstance(int kind);
};

// The chart templates of one procedure.
class BAYES_PLATFORM FacSTDictionary {
 public:
  // `path`: as PathFactory gives it.
  explicit FacSTDictionary(std::string path);
  void SetProcedure(const std::string& title);

 private:
  std::string fPath;
  std::string fProcedure;
};

// The file of the output's chart style: the colours of charts, one in each <setColor> element.
struct BAYES_PLATFORM OTemplate {
  static std::string Get();
};

// The folder of the chart templates.
struct BAYES_PLATFORM STemplate {
  static std::string Get();
};

struct BAYES_PLATFORM FetchFile {
  // The text of a file. `asText`: lines end in a line feed, whatever the file has. A file that can't be read
  // gives the empty text; when it is `required`, that is also an error that ends the procedure.
  static std::string fetch(const std::string& path, bool asText, bool required);
};

// A text as a chart shows it, in UTF-8.
class BAYES_PLATFORM ChartString {
 public:
  ChartString() = default;
  const std::string& GetText() const { return fText; }
  ChartString operator+(const ChartString& other) const { return ChartString(fText + other.fText); }

 private:
  friend struct XUtility;
  explicit ChartString(std::string text) : fText(std::move(text)) {}
  std::string fText;
};

struct BAYES_PLATFORM XUtility {
  // The text of the string table for a key; ^1 to ^9 stand for the arguments. The references "&lt;", "&gt;"
  // and "&amp;" of the table's text are decoded, those of the arguments are not.
  static ChartString ChartStringFromOLANG(const std::string& key,
                                          const std::vector<ChartString>& arguments = {});
  // A name or label of the data, as it is.
  static ChartString ChartStringFromLocalCodePage(const std::string& text);
};

// The numbers of a chart: one data source whose variables are columns of numbers.
class BAYES_PLATFORM VarDataProcessor {
 public:
  struct State;
  explicit VarDataProcessor(const std::string& dataSource);
  ~VarDataProcessor();
  VarDataProcessor(const VarDataProcessor&) = delete;
  VarDataProcessor& operator=(const VarDataProcessor&) = delete;

  // A name that was not added before.
  void AddVariable(const std::string& name);
  // Row 0 is the first. The variable must have been added. What is never set is missing, like the missing
  // value itself.
  void SetVariableValue(const std::string& name, std::size_t row, double value);

  const State& GetState() const { return *fpState; }

 private:
  std::unique_ptr<State> fpState;
};

// A chart template while it is filled. Errors of its file are shown as messages; its text is then empty.
class BAYES_PLATFORM XViZTemplate {
 public:
  struct State;
  // `folder`: as STemplate gives it.
  explicit XViZTemplate(std::string folder);
  ~XViZTemplate();
  XViZTemplate(const XViZTemplate&) = delete;
  XViZTemplate& operator=(const XViZTemplate&) = delete;

  // Reads the template of that name.
  void setTemplateInternalName(const std::string& name);
  // The template's text, for replacements that concern more than the labels.
  const std::string& getTemplateText() const;
  void setTemplateText(const std::string& text);
  // A series that the chart has. A curve of any other series is left out of the filled template, and so is a
  // panel that loses all its curves.
  void addVariable(const std::string& series);
  // What stands for a placeholder such as "[Graph Title]", wherever the template's labels name it.
  // Placeholders inside the text stay as they are.
  void addLabel(const std::string& placeholder, const ChartString& text);
  // The template with labels and series as added.
  std::string GetFilledText() const;

 private:
  std::unique_ptr<State> fpState;
};

// A chart on its way to the output.
class BAYES_PLATFORM XDocument {
 public:
  struct State;
  // False: this run's output only lists charts by their titles, so that colours, labels and all points but
  // one of a series make no difference.
  static bool IsShown();
  // `text`: a filled template. Nothing is sent of an empty one.
  explicit XDocument(const std::string& text);
  ~XDocument();
  XDocument(const XDocument&) = delete;
  XDocument& operator=(const XDocument&) = delete;

  // The procedure that the chart says it comes from.
  void setEditor(const std::string& procedure);
  // Marks the document's texts as being in the language of the host's string table.
  void setLanguage();
  // The chart's title where the chart is listed, and its description for those who can't see it.
  void SetDescription(const ChartString& title);
  void SetChartData(const VarDataProcessor& data);
  // The name of the template that the document follows.
  void applyCTemplate(const std::string& name);
  // Adds the chart to the command's output, under the innermost open heading. Once.
  void SendChart();

 private:
  std::unique_ptr<State> fpState;
};
