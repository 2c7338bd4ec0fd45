#include "agenda/repetition_editor.h"

#include <gtest/gtest.h>

#include "agenda/entries.h"
#include "agenda/launching.h"
#include "entry_lists.h"
#include "scripted_dialogs.h"
#include "store/entry_rules.h"

namespace vt {
namespace {

using test::Items;
using test::ListOf;
using Lines = std::vector<std::string>;

// Monday 18/03/2024, twenty seconds into 10:30.
const DateTime kNow = MakeDateTime(MakeDate(18, 3, 2024), 10, 30, 20);

RepetitionForm Filled(std::string fecha, std::string hora, std::string texto = "Llamar a José") {
    RepetitionForm form;
    form.fecha = std::move(fecha);
    form.hora = std::move(hora);
    form.texto = std::move(texto);
    return form;
}

TEST(OpeningARepetition, ToAddStartsOnThePresetAtThePresentTime) {
    const EntryList repetitions = ListOf({"20/03/2024 09:15 Dentista"});
    const std::vector<std::pair<std::string, std::string>> presets{
        {"", ""}, {kNoPresetDate, "18/03/2024"}, {"25/12/2024", "25/12/2024"}, {"10/03/2024", "10/03/2024"}};
    for (const auto& [preset, fecha] : presets) {
        const RepetitionForm form = OpenRepetitionForm(true, repetitions, 1, preset, kNow);
        EXPECT_EQ(form.fecha, fecha) << preset;
        EXPECT_EQ(form.hora, "10:30") << preset;
        EXPECT_EQ(form.texto, "") << preset;
        EXPECT_FALSE(form.can_delete) << preset;
    }
}

TEST(OpeningARepetition, ToChangePutsDateTimeAndTextBack) {
    const EntryList repetitions =
        ListOf({"19/03/2024 08:00 Fichar", "20/03/2024 09:15 Pan; leche (1990) <150324>", "21/03/2024 18:00 "});
    const RepetitionForm second = OpenRepetitionForm(false, repetitions, 2, kNoPresetDate, kNow);
    EXPECT_EQ(second.fecha, "20/03/2024");
    EXPECT_EQ(second.hora, "09:15");
    // Marks are an alarm's affair: a repetition's text comes back whole.
    EXPECT_EQ(second.texto, "Pan; leche (1990) <150324>");
    EXPECT_TRUE(second.can_delete);
    EXPECT_EQ(OpenRepetitionForm(false, repetitions, 3, kNoPresetDate, kNow).texto, "");
}

TEST(OpeningARepetition, OutsideTheListOpensEmptyWithNothingToDelete) {
    const EntryList repetitions = ListOf({"20/03/2024 09:15 Dentista"});
    for (const int index : {0, 2}) {
        const RepetitionForm form = OpenRepetitionForm(false, repetitions, index, kNoPresetDate, kNow);
        EXPECT_EQ(form.fecha, "") << index;
        EXPECT_FALSE(form.can_delete) << index;
    }
}

struct RefusalCase {
    const char* name;
    RepetitionForm form;
    const char* message;
    MsgIcon icon;
    EditorBox box;
};

class RefusedRepetition : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(RefusedRepetition, ShowsOneMessageAndNamesTheBox) {
    test::ScriptedDialogs dialogs;
    RepetitionForm form = GetParam().form;
    EXPECT_EQ(CheckRepetitionForm(form, kNow, dialogs), GetParam().box);
    ASSERT_EQ(dialogs.Shown().size(), 1u);
    EXPECT_EQ(dialogs.Shown()[0].text, GetParam().message);
    EXPECT_EQ(dialogs.Shown()[0].icon, GetParam().icon);
}

INSTANTIATE_TEST_SUITE_P(
    Checks, RefusedRepetition,
    ::testing::Values(
        RefusalCase{"EmptyDate", Filled("", "10:30"), kEnterDateMessage, MsgIcon::Information, EditorBox::Fecha},
        RefusalCase{"EmptyTime", Filled("20/03/2024", " "), kEnterTimeMessage, MsgIcon::Information, EditorBox::Hora},
        RefusalCase{"PreviousMinute", Filled("18/03/2024", "10:29"), kTimePassedMessage, MsgIcon::Exclamation,
                    EditorBox::Hora},
        RefusalCase{"Yesterday", Filled("170324", "2359"), kTimePassedMessage, MsgIcon::Exclamation, EditorBox::Hora},
        RefusalCase{"ShortFormNoDate", Filled("290223", "09:00"), kDateFormatMessage, MsgIcon::Exclamation,
                    EditorBox::Fecha},
        RefusalCase{"SlashedNoRealDay", Filled("30/02/2024", "09:00"), kDateFormatMessage, MsgIcon::Exclamation,
                    EditorBox::Fecha},
        RefusalCase{"NoTime", Filled("20/03/2024", "975"), kTimeFormatMessage, MsgIcon::Exclamation, EditorBox::Hora}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(AcceptedRepetition, AllowsAnEmptyTextAndThePresentMinute) {
    test::ScriptedDialogs dialogs;
    RepetitionForm empty_text = Filled("200324", "745", "");
    EXPECT_EQ(CheckRepetitionForm(empty_text, kNow, dialogs), std::nullopt);
    EXPECT_EQ(empty_text.fecha, "20/03/2024");
    EXPECT_EQ(empty_text.hora, "07:45");
    RepetitionForm present = Filled("18/03/2024", "1030", "Ahora");
    EXPECT_EQ(CheckRepetitionForm(present, kNow, dialogs), std::nullopt);
    EXPECT_EQ(present.hora, "10:30");
    EXPECT_TRUE(dialogs.Shown().empty());
}

TEST(RepetitionEntry, IsDateTimeAndTextWithoutCommas) {
    EXPECT_EQ(RepetitionEntryFromForm(Filled("20/03/2024", "07:45", "Llamar, ya")), "20/03/2024 07:45 Llamar; ya");
    EXPECT_EQ(RepetitionEntryFromForm(Filled(" 20/03/2024 ", "07:45 ", "!Tal cual")), "20/03/2024 07:45 !Tal cual");
    const std::string empty = RepetitionEntryFromForm(Filled("20/03/2024", "07:45", ""));
    EXPECT_EQ(GetRepetitionField(empty, 7), "20/03/2024 07:45");
    EXPECT_EQ(GetRepetitionField(empty, 6), "");
}

TEST(DeleteRepetitionQuestion, AsksWithCancelAsTheDefault) {
    test::ScriptedDialogs dialogs;
    dialogs.QueueAnswer(MsgAnswer::Ok);
    EXPECT_TRUE(ConfirmDeleteRepetition(dialogs));
    EXPECT_FALSE(ConfirmDeleteRepetition(dialogs));
    ASSERT_EQ(dialogs.Shown().size(), 2u);
    for (const MessageBox& box : dialogs.Shown()) {
        EXPECT_EQ(box.text, "¿Quieres borrar esta repetición?");
        EXPECT_EQ(box.icon, MsgIcon::Question);
        EXPECT_EQ(box.buttons, MsgButtons::OkCancel);
        EXPECT_EQ(box.default_answer, MsgAnswer::Cancel);
    }
}

class RepetitionEditing : public ::testing::Test {
protected:
    EntryList repetitions = ListOf({"19/03/2024 08:00 Fichar", "20/03/2024 09:15 Dentista"});
    test::ScriptedDialogs dialogs;
    DateTime accepted_at = kNow;

    RepetitionFormView Typing(std::string fecha, std::string hora, std::string texto) {
        return [=, this](RepetitionForm& form) {
            form.fecha = fecha;
            form.hora = hora;
            form.texto = texto;
            return CheckRepetitionForm(form, accepted_at, dialogs) ? EditorAction::Cancel : EditorAction::Save;
        };
    }
    static RepetitionFormView Closing(EditorAction action) {
        return [action](RepetitionForm&) { return action; };
    }
};

TEST_F(RepetitionEditing, AddingAppends) {
    EXPECT_TRUE(OpenRepetitionEditor(repetitions, true, 0, "", kNow, Typing("210324", "9", "")));
    EXPECT_EQ(Items(repetitions), (Lines{"19/03/2024 08:00 Fichar", "20/03/2024 09:15 Dentista", "21/03/2024 09:00 "}));
}

TEST_F(RepetitionEditing, ChangingReplacesInPlace) {
    EXPECT_TRUE(
        OpenRepetitionEditor(repetitions, false, 1, kNoPresetDate, kNow, Typing("19/03/2024", "0815", "Fichar, ya")));
    EXPECT_EQ(Items(repetitions), (Lines{"19/03/2024 08:15 Fichar; ya", "20/03/2024 09:15 Dentista"}));
}

TEST_F(RepetitionEditing, DeletingRemovesOnlyWhatIsThere) {
    EXPECT_FALSE(OpenRepetitionEditor(repetitions, false, 3, kNoPresetDate, kNow, Closing(EditorAction::Delete)));
    EXPECT_FALSE(OpenRepetitionEditor(repetitions, true, 1, "", kNow, Closing(EditorAction::Delete)));
    EXPECT_EQ(repetitions.Count(), 2);
    EXPECT_TRUE(OpenRepetitionEditor(repetitions, false, 1, kNoPresetDate, kNow, Closing(EditorAction::Delete)));
    EXPECT_EQ(Items(repetitions), Lines{"20/03/2024 09:15 Dentista"});
}

TEST_F(RepetitionEditing, CancellingOrARefusedFormChangesNothing) {
    const EntryList before = repetitions;
    EXPECT_FALSE(OpenRepetitionEditor(repetitions, false, 2, kNoPresetDate, kNow, Closing(EditorAction::Cancel)));
    EXPECT_FALSE(OpenRepetitionEditor(repetitions, true, 0, "", kNow, Typing("", "10:30", "x")));
    EXPECT_EQ(repetitions, before);
    EXPECT_EQ(dialogs.Texts(), Lines{kEnterDateMessage});
}

TEST_F(RepetitionEditing, AChangedRepetitionThatLeftTheListIsAppendedNotLost) {
    StoreRepetition(repetitions, false, 5, "22/03/2024 09:00 Nuevo");
    EXPECT_EQ(repetitions.Count(), 3);
    EXPECT_EQ(repetitions[3], "22/03/2024 09:00 Nuevo");
}

// Moved to the present minute, the reminder is due at the very next tick.
TEST_F(RepetitionEditing, MovedToThePresentMinuteFiresAtTheNextTick) {
    accepted_at = kNow + std::chrono::seconds{30};  // 10:30:50
    ASSERT_TRUE(
        OpenRepetitionEditor(repetitions, false, 2, kNoPresetDate, kNow, Typing("18/03/2024", "1030", "Dentista")));
    EXPECT_EQ(repetitions[2], "18/03/2024 10:30 Dentista");
    SortRepetitions(repetitions);
    EXPECT_EQ(FindDueRepetition(repetitions, accepted_at + std::chrono::seconds{1}), 1);
    EXPECT_EQ(repetitions[1], "18/03/2024 10:30 Dentista");
}

}  // namespace
}  // namespace vt
