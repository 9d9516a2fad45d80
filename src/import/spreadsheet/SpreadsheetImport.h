#pragma once

#include <memory>
#include <string>
#include <vector>

#include "import/DataImport.h"
#include "sheet/DecimalCommas.h"

namespace quorvex {

// The import of a sheet of a spreadsheet file. Part of the library quorvex_spreadsheet (SpreadsheetFile.h).
class SpreadsheetImport : public DataImport {
 public:
  // Begins with the first sheet. Fails with the message of it.
  static Result<std::unique_ptr<SpreadsheetImport>> Open(const std::string& file, const DataSheet& sheet,
                                                         const LongWork& work = {});

  const std::vector<std::string>& Sheets() const { return sheets_; }
  const std::string& ChosenSheet() const { return chosen_; }
  // Reads another sheet, of which Preview is to be shown then. Where it can't, it says why; where that or the user, who
  // waits for it, ends it, it returns false, with the sheet from before still chosen.
  bool ChooseSheet(const std::string& name, Prompter& user);

  std::optional<std::size_t> LineCount() const override { return cells_->GridLastRow(); }

  // Under a locale with a point, to read texts as numbers where they have decimal commas down the whole of a column.
  std::optional<OtherReading> Offer(const LocaleText& locale) const override;
  void TakeOffer(const LocaleText& locale) override;

 protected:
  Reading ReadRows(std::size_t first, std::size_t count, const std::string& marker) const override;

 private:
  DecimalCommas Commas(const LocaleText& locale) const;
  using DataImport::DataImport;

  std::vector<std::string> sheets_;
  std::string chosen_;
  std::shared_ptr<const GridCells> cells_;
};

// Opens a file, a spreadsheet where its name ends so and a text otherwise. Fails with the message of it, which is empty
// where the user, who waits for it, cancelled.
Result<std::unique_ptr<DataImport>> OpenImport(const std::string& file, const DataSheet& sheet,
                                               const LocaleText& locale, Prompter* user = nullptr);

// Begins the import of a file into a sheet: asks before data may be overwritten, opens the file and refuses what cannot
// be read. Nothing where the import ends here.
std::unique_ptr<DataImport> ImportData(const std::string& file, const SheetEdit& edit);

}  // namespace quorvex
