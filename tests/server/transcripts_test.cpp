// What the server writes to each socket, and in which order, in scripted drafts: whole ones, losses
// at its writes, kicks, malformed messages. The file transcripts.txt holds the length and the
// hash of what each group of scripts has to give; a group that gives something else is written
// into the folder for temporary files.
#include "engine/samplefiles.h"
#include "server/scene.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

namespace packwise {
namespace {

class Transcripts : public testing::Test {
protected:
    using Keep = std::function<void(const std::string& name, const std::string& transcript)>;

    static std::string nameOf(const SceneChoices& c, int seats) {
        return std::string(c.rochester ? "rochester" : "booster") + (c.timed ? "-timed" : "") +
               (c.real ? "-real" : "") + (c.halt ? "-halt" : "") + (c.fixSeats ? "-fix" : "") +
               "-" + std::to_string(seats) + "x" + std::to_string(c.packs);
    }

    void seat(Scene& scene, int seats) {
        for (int num = 1; num <= seats; ++num) {
            scene.join(num, "P" + std::to_string(num));
        }
    }

    void wholeDrafts(const Keep& keep) {
        for (const bool rochester : {false, true}) {
            for (const int seats : {1, 2, 3, 8}) {
                for (const int packs : {3, 6}) {
                    for (const bool real : {false, true}) {
                        SceneChoices c;
                        c.rochester = rochester;
                        c.timed = packs == 6;
                        c.seconds = packs == 6 ? 30 : 1;
                        c.packs = packs;
                        c.real = real;
                        c.sets = {"Ice Age", "Whole", "Alliances", "Tiny", "Tiny", "Whole"};
                        Scene scene(c, static_cast<std::uint64_t>(seats * 10 + packs));
                        seat(scene, seats);
                        scene.start();
                        scene.poke();
                        scene.play();
                        keep("whole-" + nameOf(c, seats), scene.transcript);
                    }
                }
            }
        }
    }

    void lobby(const Keep& keep) {
        Scene scene({});
        scene.connect();
        scene.say(1, "VERS1.3~NAMEOld~");
        scene.connect();
        scene.say(2, "NAMENone~");
        scene.join(3, "P3");
        scene.join(4, "P3");  // a duplicate
        scene.join(4, "\xC9mile|x");
        scene.join(5, " ");  // always a duplicate
        scene.say(3, "MESG<P3> hello | there~PING~TEST~PONG~WHAT~NAM~~");
        scene.choices.silence = true;
        scene.say(3, "MESGpsst~");
        scene.choices.silence = false;
        scene.say(4, "NAMEOther~");  // a second name
        scene.kick(2);
        scene.kick(6);
        scene.join(2, "Back");
        for (int num = 5; num <= 9; ++num) {
            scene.join(num, "F" + std::to_string(num));
        }
        scene.ping(3);
        for (int i = 0; i < 11; ++i) {
            scene.server.pingSecond();
        }
        scene.say(3, "PONG~");
        scene.say(5, "DROP~");
        scene.hangUp(5);
        scene.breakNow(6);
        scene.poke();
        scene.breakNow(7);
        scene.say(8, "MESGfound~");
        scene.say(1, "CODE-12~CODE0~CODEx~CARDUx~");
        scene.say(8, "NAMEhalf");
        scene.say(8, "~DROP~");
        for (int i = 0; i < 25; ++i) {
            scene.poke();
        }
        scene.say(1, "NAME" + std::string(100, 'n') + "~");
        scene.say(2, std::string(70000, 'x'));
        keep("lobby", scene.transcript);

        Scene full({});
        for (int num = 1; num <= 8; ++num) {
            full.connect();
            if (num != 5) {
                full.say(num, "VERS1.41~NAMEF" + std::to_string(num) + "~");
            }
        }
        for (int i = 0; i < 19; ++i) {
            full.poke();
        }
        full.connect();
        full.poke();
        full.connect();
        keep("lobby-full", full.transcript);
    }

    // Whole drafts in which one link breaks at a write to it: at each of the first, then at every
    // seventh.
    void lossesAtEveryWrite(const Keep& keep) {
        for (const bool rochester : {false, true}) {
            for (const bool halt : {false, true}) {
                SceneChoices c;
                c.rochester = rochester;
                c.halt = halt;
                for (int lost = 1; lost <= 3; ++lost) {
                    std::string all;
                    for (int n = 1; n < 400; n += n < 60 ? 1 : 7) {
                        Scene scene(c, 5);
                        seat(scene, 3);
                        scene.breakAtWrite(lost, n);
                        scene.start();
                        scene.play();
                        all += "=== write " + std::to_string(n) + "\n" + scene.transcript;
                        if (scene.transcript.find("breaks") == std::string::npos) {
                            break;
                        }
                    }
                    keep("loss-" + std::to_string(lost) + "-" + nameOf(c, 3), all);
                }
            }
        }
    }

    // A second link breaks soon behind the first, also while that loss is being told.
    void twoLosses(const Keep& keep) {
        for (const bool rochester : {false, true}) {
            for (const bool halt : {false, true}) {
                SceneChoices c;
                c.rochester = rochester;
                c.halt = halt;
                std::string all;
                for (int n = 1; n < 70; n += 2) {
                    for (const int behind : {0, 1, 2, 5}) {
                        Scene scene(c, 7);
                        seat(scene, 4);
                        scene.breakAtWrite(2, n);
                        scene.breakAtWrite(n % 3 == 0 ? 1 : 4, n + behind);
                        scene.start();
                        scene.play();
                        all += "=== " + std::to_string(n) + "+" + std::to_string(behind) + "\n" +
                               scene.transcript;
                    }
                }
                keep("two-" + nameOf(c, 4), all);
            }
        }
    }

    // An orderly close right before an answer of the seat, at each of the first 60.
    void closesAtEveryStep(const Keep& keep) {
        for (const bool rochester : {false, true}) {
            SceneChoices c;
            c.rochester = rochester;
            std::string all;
            for (int step = 0; step < 60; ++step) {
                Scene scene(c, 9);
                seat(scene, 3);
                scene.start();
                int answers = 0;
                bool gone = false;
                for (int i = 0; i < 300; ++i) {
                    const bool acted = scene.act([&](int num) {
                        if (answers++ == step) {
                            gone = true;
                            scene.say(num, "DROP~");
                            scene.hangUp(num);
                        }
                    });
                    if (gone) {
                        break;
                    }
                    if (!acted) {
                        break;
                    }
                }
                if (step % 3 == 0) {
                    scene.choices.halt = true;
                    scene.hangUp(3);
                }
                scene.play();
                all += "=== step " + std::to_string(step) + "\n" + scene.transcript;
                if (!gone) {
                    break;
                }
            }
            keep("close-" + nameOf(c, 3), all);
        }
    }

    void starts(const Keep& keep) {
        Scene nobody({});
        nobody.start();
        nobody.connect();
        nobody.start();
        keep("start-nobody", nobody.transcript);

        Scene holes({});
        for (int num = 1; num <= 5; ++num) {
            holes.join(num, "P" + std::to_string(num));
        }
        holes.hangUp(2);
        holes.hangUp(3);
        holes.connect();  // an onlooker without a name
        holes.start();
        holes.say(2, "NAMELate~");
        holes.hangUp(2);
        holes.play();
        keep("start-holes", holes.transcript);

        std::string all;
        for (int lost = 1; lost <= 3; ++lost) {
            for (int n = 1; n < 12; ++n) {
                for (const bool rochester : {false, true}) {
                    SceneChoices c;
                    c.rochester = rochester;
                    c.halt = n % 2 == 0;
                    Scene scene(c, 11);
                    seat(scene, 1);
                    scene.join(2, "P2");
                    scene.breakAtWrite(lost == 3 ? 1 : lost, n);
                    if (lost == 3) {
                        scene.breakAtWrite(2, n);
                    }
                    scene.start();
                    scene.play();
                    all += "=== " + std::to_string(lost) + "/" + std::to_string(n) + "\n" +
                           scene.transcript;
                }
            }
        }
        keep("start-losses", all);
    }

    void seating(const Keep& keep) {
        for (const bool rochester : {false, true}) {
            for (const bool halt : {false, true}) {
                SceneChoices c;
                c.rochester = rochester;
                c.halt = halt;
                c.fixSeats = true;
                std::string all;
                for (int lost = 0; lost <= 4; ++lost) {
                    Scene scene(c, 13);
                    seat(scene, 3);
                    scene.start();
                    if (lost == 4) {
                        for (int num = 1; num <= 3; ++num) {
                            scene.hangUp(num);
                        }
                    } else if (lost > 0) {
                        scene.hangUp(lost);
                    }
                    scene.say(1, "MESGwaiting~");
                    scene.seated({{0, 2}, {1, 2}});
                    scene.play();
                    all += "=== lost " + std::to_string(lost) + "\n" + scene.transcript;
                }
                keep("seating-" + nameOf(c, 3), all);
            }
        }
        SceneChoices c;
        c.fixSeats = true;
        for (const bool lose : {false, true}) {
            Scene scene(c);
            seat(scene, 3);
            scene.hangUp(1);
            scene.duringABox = [&] {
                if (lose) {
                    scene.hangUp(2);
                    scene.hangUp(3);
                }
            };
            scene.start();
            scene.play();
            keep(lose ? "seating-hole-all-lost" : "seating-hole", scene.transcript);
        }
    }

    void malformed(const Keep& keep) {
        static const std::vector<std::string> kNoise = {
            "",       "N",        "NAME",    "CARD",
            "CARDU",  "CARDUa|b", "CODE",    "CODEx",
            "CODE07", "BPCK|",    "BPCKx",   "BPCKUa|",
            "BPCK",   "RPCK",     "RPCKx",   "RPCK-1",
            "RPCK99", "RPCK007",  "RPCK0!",  "RAND",
            "RANDx",  "RROK",     "RROKx",   "RPOK",
            "PINGx",  "PONG",     "DROP01",  "VERS",
            "VERS9",  "SEAT99",   "BOOSUa|", "\xFF\xFE\x80\x81"};
        for (const bool rochester : {false, true}) {
            SceneChoices c;
            c.rochester = rochester;
            Scene scene(c, 17);
            seat(scene, 3);
            scene.connect();
            std::size_t at = 0;
            for (const std::string& noise : kNoise) {
                scene.say(1 + static_cast<int>(at++ % 4), noise + "~");
            }
            scene.start();
            for (int i = 0; i < 400; ++i) {
                const bool acted = scene.act(
                    [&](int num) { scene.say(num % 4 + 1, kNoise[at++ % kNoise.size()] + "~"); });
                if (!acted) {
                    break;
                }
                scene.say(static_cast<int>(at % 4) + 1, kNoise[at % kNoise.size()] + "~");
                ++at;
            }
            scene.play();
            for (const std::string& noise : kNoise) {
                scene.say(1, noise + "~");
            }
            keep("malformed-" + nameOf(c, 3), scene.transcript);
        }
    }

    void allAtOnce(const Keep& keep) {
        for (const bool rochester : {false, true}) {
            for (const bool halt : {false, true}) {
                SceneChoices c;
                c.rochester = rochester;
                c.halt = halt;
                std::string all;
                for (int rounds = 0; rounds < 12; ++rounds) {
                    Scene scene(c, 19);
                    seat(scene, 5);
                    scene.start();
                    scene.play(rounds);
                    for (int num = 2; num <= 5; ++num) {
                        scene.breakNow(num);
                    }
                    scene.poke();
                    scene.play();
                    all += "=== " + std::to_string(rounds) + "\n" + scene.transcript;
                }
                keep("most-at-once-" + nameOf(c, 5), all);
            }
        }
    }

    void SetUp() override {
        std::string tiny = sample::header(1, 1, 0);
        for (int i = 0; i < 22; ++i) {
            tiny += sample::record(sample::nameOf('+', i), "+") +
                    sample::record(sample::nameOf('=', i), "=");
        }
        folder_.write("Tiny.pw", tiny + sample::end());
        for (const char* set : {"Whole", "IceAge", "Alliance"}) {
            folder_.write(std::string(set) + ".pw", sample::wholeSet());
        }
        for (const char* set : {"Whole", "IceAge"}) {
            folder_.write(std::string(set) + ".ord", sample::wholeOrder());
        }
        std::filesystem::current_path(folder_.path());
    }
    void TearDown() override { std::filesystem::current_path("/"); }

    sample::TempFolder folder_;
};

std::string summaryOf(const std::string& transcript) {
    std::uint64_t hash = 14695981039346656037U;  // FNV-1a
    for (const char c : transcript) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    return std::to_string(transcript.size()) + ' ' + std::to_string(hash);
}

TEST_F(Transcripts, AreToTheByteWhatTheyWere) {
    std::map<std::string, std::string> wanted;
    std::ifstream file(TRANSCRIPTS_FILE);
    for (std::string name, summary; file >> name && std::getline(file >> std::ws, summary);) {
        wanted[name] = summary;
    }
    std::size_t groups = 0;
    const Keep keep = [&](const std::string& name, const std::string& transcript) {
        ++groups;
        if (summaryOf(transcript) != wanted[name]) {
            const std::string path = testing::TempDir() + name + ".txt";
            std::ofstream(path, std::ios::binary) << transcript;
            ADD_FAILURE() << name << ' ' << summaryOf(transcript) << ", see " << path;
        }
    };
    wholeDrafts(keep);
    lobby(keep);
    lossesAtEveryWrite(keep);
    twoLosses(keep);
    closesAtEveryStep(keep);
    starts(keep);
    seating(keep);
    malformed(keep);
    allAtOnce(keep);
    EXPECT_EQ(groups, wanted.size());
}

}  // namespace
}  // namespace packwise
