#include "desktop/windows/AssemblerListing.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "desktop/QtHost.h"
#include "desktop/kit/FormKit.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/CodeEditor.h"
#include "desktop/widgets/Colour.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

QColor Colour(uint32_t colour) { return ToColour(static_cast<int32_t>(colour)); }

// Of each line, the colour it begins with.
std::vector<uint32_t> LineColours(const AsseListing& listing) {
  std::vector<uint32_t> colours;
  size_t run = 0;
  for (size_t start = 0; start < listing.RText2.size();) {
    while (run + 1 < listing.RText2Runs.size() && listing.RText2Runs[run + 1].start <= start) ++run;
    colours.push_back(listing.RText2Runs.empty() ? asm_colour::kListing : listing.RText2Runs[run].colour);
    const size_t end = listing.RText2.find('\n', start);
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return colours;
}

}  // namespace

AssemblerListing::AssemblerListing(FormKit& kitOfWindow, QWidget* parent)
    : QWidget(parent), kit(kitOfWindow), text(new CodeEditor([this](int line, const QString& content) {
        std::vector<CodeEditor::Piece> pieces;
        if (static_cast<size_t>(line) >= colours.size()) return pieces;
        const uint32_t colour = colours[static_cast<size_t>(line)];
        pieces.push_back({0, Colour(colour)});
        const auto tab = content.indexOf('\t');
        if (colour == asm_colour::kAddress && tab >= 0)
          pieces.push_back({static_cast<int>(tab), Colour(asm_colour::kCode)});
        return pieces;
      })) {
  const ControlRef ref = kit.binder.Ref("RText2");
  NameWidget(text, "RText2", ToQt(CaptionOf(ref)));
  kit.binder.BindLook(ref, text);
  text->setReadOnly(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  connect(text, &CodeEditor::DoubleClicked, this,
          [this, ref] { kit.host.Act(kit.m, [this, ref] { DoubleClick(kit.m, ref); }); });
  auto* column = new QVBoxLayout(this);
  column->addWidget(kit.Check("Check2"));
  column->addWidget(text, 1);
}

void AssemblerListing::ShowListing() {
  const AsseListing& listing = kit.m.asse.listing;
  colours = LineColours(listing);
  QString lines = ToQt(listing.RText2);
  lines.remove('\r');
  text->ShowAnew(lines);
}

void AssemblerListing::ShowSelection() {
  const AsseListing& listing = kit.m.asse.listing;
  const std::string_view all = listing.RText2;
  const auto start = std::min(static_cast<size_t>(listing.SelStart), all.size());
  const size_t line = LineOfPlace(all, start);
  const size_t from = PlaceOfLine(all, line).start;
  text->SelectFrom(static_cast<int>(line), static_cast<int>(ToQt(all.substr(from, start - from)).size()),
                   listing.SelLength);
}

void AssemblerListing::ShowRecord() {
  const AsseListing& listing = kit.m.asse.listing;
  if (listings != listing.listings) {
    listings = listing.listings;
    ShowListing();
  }
  if (selections != listing.selections) {
    selections = listing.selections;
    ShowSelection();
  }
}

}  // namespace quoll
