#include "session/list_editing.h"

#include <algorithm>

#include "text/text.h"
#include "text/text_number.h"

namespace session {

ListEditing::ListEditing(game::Game& game, game::ChatCommands& commands, oscar::TolSock& client,
                         game::OperatorDialogs& dialogs, game::StringList& errors,
                         game::Timer& tmrMsgPause, game::Timer& tmrIdle)
    : game_(game),
      commands_(commands),
      client_(client),
      dialogs_(dialogs),
      errors_(errors),
      tmrMsgPause_(tmrMsgPause),
      tmrIdle_(tmrIdle) {}

void ListEditing::ManualSend(const std::string& txtWord, const std::string& txtHint, bool blank) {
    if (text::TrimSpaces(txtWord).empty()) {
        const std::string text = "You cannot send a blank message to the chat!";
        dialogs_.ShowMessage(text, "Error", game::MessageKind::Warning);
        errors_.Append(text);
        return;
    }
    if (!game_.SignedOn) {
        dialogs_.ShowMessage("Please sign on first and enter a chat!", "Note",
                             game::MessageKind::Warning);
        return;
    }
    if (client_.Chat().empty()) {
        dialogs_.ShowMessage("Please join a chat first!", "Note", game::MessageKind::Warning);
        return;
    }
    // The puzzle kind applies to this one puzzle; the mode comes back after.
    const game::GameModes saved = game_.Modes();
    game_.Modes().optMode_Click(blank ? 1 : 0);
    if (game_.GameOn) {
        game_.ResetTimers();
        tmrMsgPause_.Disable();
        tmrIdle_.Disable();
    }
    game_.WordSend(text::TrimSpaces(txtHint).empty() ? txtWord : txtWord + "," + txtHint);
    game_.Modes() = saved;
}

void ListEditing::AddDirectly(const std::string& txtManualAddWord,
                              const std::string& txtManualAddHint) {
    const std::string word = text::TrimSpaces(txtManualAddWord);
    const std::string hint = text::TrimSpaces(txtManualAddHint);
    if (word.empty()) return;
    game::StringList& words = game_.Lists().lstWords();
    words.Append(hint.empty() ? word : word + "," + hint);
    if (words.Count() == 1) game_.Lists().UpdateTopic("Unknown");
}

void ListEditing::mnuAddScramble_Click() {
    const std::string word = dialogs_.Prompt("Enter in the word you want to add.", "Add Word", "");
    if (word.empty()) return;
    const std::string hint = dialogs_.Prompt("Enter in a hint if there is one.", "Add Hint", "");
    game_.Lists().lstWords().Append(hint.empty() ? word : word + ", " + hint);
}

void ListEditing::mnuRemoveScramble_Click() {
    game::StringList& words = game_.Lists().lstWords();
    words.RemoveAt(words.Selected());
}

void ListEditing::mnuEditScramble_Click() {
    game::StringList& words = game_.Lists().lstWords();
    const int row = words.Selected();
    if (row < 0) return;
    const std::string answer =
        dialogs_.Prompt("What do you want the word to be changed to?", "Edit Word", words.At(row));
    if (answer.empty()) return;
    const std::string hint = dialogs_.Prompt("Enter in a hint if you want.", "Hint", "");
    words.Replace(row, hint.empty() ? answer : answer + ", " + hint);
}

void ListEditing::AddName(game::NameList& list, const std::string& text) {
    const std::string name = text::NormalizeName(text);
    if (!name.empty()) list.Add(name);
}

void ListEditing::RemoveSelected(game::NameList& list) {
    // The member keyed by the row's text, and that one row.
    list.RemoveRow(list.Rows().Selected());
}

std::string ListEditing::SelectedPlayer() const {
    const game::StringList& rows = game_.Scores().lstPlayers();
    const int row = rows.Selected();
    if (row < 0) return {};
    const std::string& line = rows.At(row);
    return line.substr(0, line.find(' '));
}

void ListEditing::mnuAddPlayer_Click() {
    const std::string answer =
        dialogs_.Prompt("Who is the new player you want to add?", "New Player", "");
    if (answer.empty()) return;
    game_.Scores().Insert(text::NormalizeName(answer), 0);
}

void ListEditing::mnuRemovePlayer_Click() {
    const std::string name = SelectedPlayer();
    if (!name.empty()) game_.Scores().Remove(name);
}

void ListEditing::mnuEditScore_Click() {
    const std::string name = SelectedPlayer();
    if (name.empty()) return;
    const std::string answer =
        dialogs_.Prompt("Enter in the new score", "Edit Score for " + name, "");
    // A cancelled prompt or an answer that is no number leaves the score.
    const std::string trimmed = text::TrimSpaces(answer);
    if (trimmed.empty() || (text::LeadingDecimal(trimmed) == 0 &&
                            trimmed.find_first_of("0123456789") == std::string::npos)) {
        return;
    }
    const auto current = game_.Scores().ScoreOf(name);
    if (!current) return;
    const long long wanted = std::clamp(text::WholeNumber(trimmed), -2147483647LL, 2147483647LL);
    const long long difference = std::clamp(wanted - *current, -2147483647LL, 2147483647LL);
    game_.UpdateScore(name, static_cast<std::int32_t>(difference));
}

}  // namespace session
