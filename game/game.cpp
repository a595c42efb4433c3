#include "game/game.h"

#include "history/history.h"
#include "text/text.h"

namespace game {

Game::Game(GameEnvironment environment)
    : env_(std::move(environment)), lists_(env_.dialogs, env_.errors, env_.openTopicPicker) {
    env_.tmrMsgPause.SetTick([this] { tmrMsgPause_Timer(); });
    env_.tmrIdle.SetTick([this] { tmrIdle_Timer(); });
    env_.tmrTopics.SetTick([this] { tmrTopics_Timer(); });
}

void Game::SendToFirstRoom(std::string_view text) {
    SendToRoom(env_.chat.FirstRoomIndex(), text);
}

void Game::SendToRoom(int chatIndex, std::string_view text) {
    if (chatIndex == 0) return;
    env_.chat.SendChat(chatIndex, style_.Styled(text));
}

std::string Game::EntryAt(int position) const {
    const StringList& words = lists_.lstWords();
    return position >= 0 && position < words.Count() ? words.At(position) : std::string();
}

void Game::StopRoundTimers() {
    env_.tmrMsgPause.Disable();
    env_.tmrIdle.Disable();
}

void Game::StopPlay() {
    suspended_.reset();
    AutoSend(0);
    env_.tmrTopics.Disable();
}

void Game::Suspend() {
    if (suspended_) return;
    suspended_ =
        Frozen{env_.tmrMsgPause.IsEnabled(), env_.tmrIdle.IsEnabled(), env_.tmrTopics.IsEnabled()};
    env_.tmrMsgPause.Disable();
    env_.tmrIdle.Disable();
    env_.tmrTopics.Disable();
}

void Game::Resume() {
    if (!suspended_) return;
    const Frozen frozen = *suspended_;
    suspended_.reset();
    if (frozen.topics) env_.tmrTopics.Enable();
    if (!GameOn) return;
    if (frozen.msgPause) env_.tmrMsgPause.Enable();
    if (frozen.idle) env_.tmrIdle.Enable();
}

void Game::ResetTimers() {
    PauseCount = 0;
    IdleCount = 0;
}

void Game::AutoSend(int Index) {
    if (Index == 1) {
        GameOn = true;
        if (lists_.Position() < 0) lists_.SetPosition(0);
        WordSend(EntryAt(lists_.Position()));
        return;
    }
    pendingAnswer_.reset();
    env_.tmrMsgPause.Disable();
    env_.tmrIdle.Disable();
    GameOn = false;
    ResetTimers();
}

void Game::WordSend(std::string_view StrWord) {
    if (GameOn && lists_.lstWords().Empty()) {
        SendToFirstRoom(
            "The word list has been cleared, Auto-send off. Please load a new topic to continue.");
        AutoSend(0);
        return;
    }
    Puzzle puzzle = MakePuzzle(StrWord, chkLCase, modes_.GetGameMode(), env_.random);
    pendingAnswer_ = std::move(puzzle.answer);
    puzzleLine_ = puzzle.line;
    SendToFirstRoom(puzzle.line);
    if (history_)
        history_->PuzzlePosted(text::TrimSpaces(*pendingAnswer_), lists_.CurrentTopic(),
                               modes_.GetGameMode(), ScoreLimit);
    if (GameOn) {
        IdleCount = 0;
        env_.tmrIdle.Disable();
        env_.tmrIdle.Enable();
    }
}

void Game::Advance() {
    const StringList& words = lists_.lstWords();
    if (words.Empty()) {
        GameOn = false;
        SendToFirstRoom("Word list cleared. Auto-sender turned off!");
        AutoSend(0);
        return;
    }
    // The list is played in a circle: after the last entry comes the first.
    int position = lists_.Position();
    if (position + 1 >= words.Count()) position = -1;
    lists_.SetPosition(position + 1);
    pendingAnswer_.reset();
    ResetTimers();
    env_.tmrIdle.Disable();
    env_.tmrMsgPause.Disable();
    WordSend(EntryAt(lists_.Position()));
}

void Game::tmrMsgPause_Timer() {
    if (PauseCount < SendPause) {
        ++PauseCount;
        return;
    }
    PauseCount = 0;
    Advance();
}

void Game::tmrIdle_Timer() {
    if (IdleCount < IdleTime) {
        ++IdleCount;
        return;
    }
    Advance();
}

void Game::cmdAutoSendOn_Click() {
    if (!SignedOn) {
        env_.dialogs.ShowMessage("You need to login to use the scrambler.", "Note",
                                 MessageKind::Warning);
        return;
    }
    if (lists_.lstWords().Empty()) {
        const std::string text =
            "You cannot start Auto Send without a word list. Please add a Topic on the Scramble "
            "List section!";
        env_.dialogs.ShowMessage(text, "Error", MessageKind::Warning);
        env_.errors.Append(text);
        return;
    }
    AutoSend(1);
}

void Game::cmdAutoSendOff_Click() {
    AutoSend(0);
}

void Game::cmdAnswer_Click() {
    if (pendingAnswer_) SendToFirstRoom("The answer was (" + *pendingAnswer_ + ")!");
    ResetTimers();
    env_.tmrMsgPause.Disable();
    env_.tmrIdle.Disable();
    if (GameOn) env_.tmrMsgPause.Enable();
    pendingAnswer_.reset();
}

void Game::cmdHint_Click() {
    if (pendingAnswer_) SendToFirstRoom("Hint: " + HintWord(*pendingAnswer_, env_.random));
}

void Game::cmdSkip_Click() {
    pendingAnswer_.reset();
    const int position = lists_.Position();
    if (position + 1 >= lists_.lstWords().Count()) {
        // The last entry was in play: the running timer goes on from the top.
        lists_.SetPosition(0);
        return;
    }
    lists_.SetPosition(position + 1);
    env_.tmrIdle.Disable();
    env_.tmrMsgPause.Disable();
    WordSend(EntryAt(lists_.Position()));
}

void Game::NewGame() {
    env_.tmrMsgPause.Disable();
    env_.tmrIdle.Disable();
    pendingAnswer_.reset();
    if (!scores_.Empty()) SendToFirstRoom(Announcement());
    if (history_) history_->GameEnded({});
    scores_.Clear();
    if (chkNewTopic) {
        NewTopic(true);
        return;
    }
    SendToFirstRoom("New Game Started! Topic: " + lists_.CurrentTopic() + "!");
    ResetTimers();
    if (GameOn) env_.tmrMsgPause.Enable();
}

void Game::NewTopic(bool blnCcom) {
    pendingAnswer_.reset();
    if (!blnCcom && !env_.dialogs.AskYesNo("Do you want the topic to be chosen through the chat?",
                                           "Through Chat or Manual?")) {
        lists_.lstWords().Clear();
        lists_.UpdateTopic("[None]");
        if (env_.openTopicPicker) env_.openTopicPicker();
        return;
    }
    const std::vector<TopicClass>& topics = lists_.Topics();
    if (topics.empty()) {
        if (blnCcom) {
            SendToFirstRoom("There are no topics loaded to choose from!");
        } else {
            env_.dialogs.ShowMessage("There are no topics to choose from!", "Error",
                                     MessageKind::Warning);
        }
        return;
    }
    std::string names;
    for (const TopicClass& topic : topics)
        names += (names.empty() ? " " : ", ") + topic.GetTopic();
    SendToFirstRoom("Please choose a new topic from this list:" + names + ".");
    env_.tmrMsgPause.Disable();
    env_.tmrIdle.Disable();
    ResetTimers();
    env_.tmrTopics.Enable();
}

void Game::PutTopicInPlay(const std::string& name) {
    lists_.lstWords().Clear();
    lists_.AddTopicList(name);
}

bool Game::ChooseTopicFromChat(int chatIndex, const std::string& text) {
    // With votes, a line naming a topic chooses nothing; the timer picks one.
    if (chkTopicVote) return false;
    const std::string key = TopicKey(text);
    for (const TopicClass& topic : lists_.Topics()) {
        if (TopicKey(topic.GetTopic()) != key) continue;
        const std::string name = topic.GetTopic();
        SendToRoom(chatIndex, "The Topic '" + name + "' has been chosen!");
        PutTopicInPlay(name);
        env_.tmrTopics.Disable();
        pendingAnswer_.reset();
        lists_.cmdRandomize_Click(env_.random);
        env_.tmrMsgPause.Disable();
        env_.tmrIdle.Disable();
        if (GameOn) {
            ResetTimers();
            env_.tmrMsgPause.Enable();
        }
        return true;
    }
    return false;
}

void Game::tmrTopics_Timer() {
    const std::vector<TopicClass>& topics = lists_.Topics();
    std::string name;
    if (!topics.empty()) {
        const auto k = env_.random.RandomNumber(static_cast<long long>(topics.size()), 1);
        name = topics[static_cast<std::size_t>(k - 1)].GetTopic();
        SendToFirstRoom("No topics were chosen. The topic '" + name +
                        "' has been chosen randomly.");
    }
    PutTopicInPlay(name);
    lists_.cmdRandomize_Click(env_.random);
    if (GameOn) {
        ResetTimers();
        env_.tmrMsgPause.Enable();
    }
    env_.tmrTopics.Disable();
}

void Game::CheckAnswer(int chatIndex, const std::string& sender, const std::string& text) {
    if (!pendingAnswer_) return;
    const std::string answer = text::TrimSpaces(*pendingAnswer_);
    if (text::LowerCase(text) != text::LowerCase(answer)) return;

    // The sender's name is the server's text, not ours: it goes into the
    // line, and into the score lines later, as text, never as markup.
    SendToRoom(chatIndex, text::EscapeMarkup(sender) + " got it right!!! (" + answer + ")");
    pendingAnswer_.reset();
    if (GameOn) {
        env_.tmrIdle.Disable();
        env_.tmrMsgPause.Disable();
        ResetTimers();
        env_.tmrMsgPause.Enable();
    }
    if (history_) history_->AnswerCredited(sender);
    const std::string player = text::EscapeMarkup(text::NormalizeName(sender));
    if (scores_.Has(player)) {
        UpdateScore(player, 1);
    } else {
        AddPlayer(player);
    }
}

void Game::AddPlayer(const std::string& strPlayer) {
    if (scores_.AddPlayer(strPlayer) && ScoreLimit <= 1) AnnounceWinnerAndStartNewGame();
}

void Game::UpdateScore(const std::string& strPlayer, std::int32_t Score) {
    const auto score = scores_.UpdateScore(strPlayer, Score);
    if (score && *score >= ScoreLimit) AnnounceWinnerAndStartNewGame();
}

void Game::AnnounceWinnerAndStartNewGame() {
    SendToFirstRoom(Announcement());
    NewGame();
}

std::string Game::Announcement() {
    const std::string winners = scores_.FindWinners();
    if (history_) history_->GameEnded(history::WinnerKeys(winners, kTieSeparator));
    return WinnerMessage(winners);
}

void Game::ShowTopScores() {
    const auto line = scores_.TopScoresLine();
    SendToFirstRoom(line ? *line : "There are no recorded scores yet.");
}

}  // namespace game
