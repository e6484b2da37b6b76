// The picture of a cassette in its deck, with reels that turn.
#pragma once

#include <QWidget>

namespace quoll {

class DeckPicture : public QWidget {
  Q_OBJECT

 public:
  DeckPicture();

  // reel: which of the reels' pictures, 0 to TTape::kPictures - 1; label: the name of the tape.
  void Set(int reel, const QString& label);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int reelShown = 0;
  QString labelShown;
};

}  // namespace quoll
