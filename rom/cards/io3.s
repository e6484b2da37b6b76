; ROM of the free card slot 3, seen at 0xC000 there. There is no program in it: it says so.
        .include "card.inc"
        .text
        card_page "free card, no program"
