#include "engine/embedded/StopWords.h"

#include <string>
#include <unordered_set>

namespace vorq::gateway {
namespace {

constexpr std::string_view kWords =
    // English
    "a about above after again against all also am an and any are aren't as at be because been "
    "before being below between both but by can can't cannot could did do does doesn't doing don't "
    "down during each either else etc even ever every few for from further get gets got had has "
    "have having he her here hers herself him himself his how however i if in into is isn't it "
    "it's its itself just let like made make makes many may me might more most much must my myself "
    "neither no nor not now of off often on once one only onto or other others our ours out over "
    "own per rather same shall she should since so some still such than that that's the their "
    "theirs them then there therefore these they this those though through thus to too toward "
    "under until up upon us use used uses very via was we were what when where whether which while "
    "who whom whose why will with within without would yet you your yours two three "
    "became become becomes call called come comes example find found give given gives go goes hold "
    "kind mean means need needs part parts return returns recently usually really thanks thank "
    "please regards best hi cheers dear place show showed shown shows take taken takes thing "
    "things took way ways "
    // German
    "aber alle allem allen aller alles als also am andere anderen auch auf aus bei beim bin bis "
    "bist da dabei damit dann das dass dein dem den der des dessen die dies diese diesem diesen "
    "dieser dieses doch dort du durch ein eine einem einen einer eines er es etwas euch eure für "
    "gegen gewesen habe haben hat hatte hatten hier hinter ich ihm ihn ihnen ihr ihre ihrem ihren "
    "ihrer immer in indem ins ist jede jeder jedes jener jetzt kann kein keine können könnte man "
    "manche mehr mein mich mir mit muss nach nicht nichts noch nun nur ob oder ohne sehr sein "
    "seine seinem seinen seiner selbst sich sie sind so solche soll sondern sonst über um und uns "
    "unser unter viel vom von vor war waren warum was weil welche wenn werde werden wie wieder "
    "wird wo wurde wurden zu zum zur zwischen "
    // French
    "ai au aux avec avait c'est ce ces cet cette ceux chez comme dans de des donc dont du elle "
    "elles en est et eu été être eux fait il ils je la le les leur leurs lui ma mais mes moi mon "
    "ne ni nos notre nous on ont ou où par parce pas peut plus pour qu que quel quelle quels qui "
    "sa sans se ses si soit son sont sous sur ta tandis te tes toi ton tous tout toute très tu un "
    "une vos votre vous y était aussi entre "
    // Spanish and Portuguese
    "al algo ante antes como con cuando cual de del desde donde durante e el ella ellas ellos "
    "entre "
    "era eran es esa ese eso esta estaba estas este esto estos está están fue fueron ha hasta hay "
    "la las le les lo los mas más me mi mientras mismo muy no nos o os para pero por porque que "
    "quien se sea ser si sin sobre son su sus también tan tiene todo todos una unas uno unos y ya "
    "ao aos às até com da das depois do dos ela elas ele eles em essa esse isso isto já mesmo "
    "muito na nas não nem num numa onde ou pela pelas pelo pelos quando são sem seu seus sua suas "
    "só também tem têm um uma "
    // Italian and Dutch
    "agli alla alle allo anche che chi ci come cui dai dal dalla degli dei della delle dello di "
    "gli ha hanno il io loro ma mi nei nel nella nelle non noi ogni per perché più può qual quando "
    "quella quello questa questo sono sta su sul sulla tra tutti un una uno è aan als bij dan dat "
    "deze die dit door een en er geen had heb heeft het hij hoe hun ik is je kan maar met mijn "
    "naar niet nog nu of om onder ook op over te tot uit van veel voor waar was wat we wel werd "
    "wie worden wordt ze zich zij zijn zo zou "
    // Chinese, Japanese
    "什么 怎么 为什么 如何 以及 因为 所以 但是 可以 这个 一个 一种 没有 我们 他们 "
    "最後 近年 毎年 場合 以上 以下";

constexpr std::string_view kCalendar =
    "january february march april june july august september october november december monday "
    "tuesday wednesday thursday friday saturday sunday "
    "januar februar märz mai juni juli oktober dezember montag dienstag mittwoch donnerstag "
    "freitag "
    "samstag sonnabend sonntag "
    "janvier février mars avril juin juillet août septembre octobre novembre décembre lundi mardi "
    "mercredi jeudi vendredi samedi dimanche "
    "enero febrero marzo abril mayo junio julio agosto septiembre octubre noviembre diciembre "
    "lunes "
    "martes miércoles jueves viernes sábado domingo";

std::unordered_set<std::string_view> split(std::string_view words) {
    std::unordered_set<std::string_view> set;
    while (!words.empty()) {
        const std::size_t blank = words.find(' ');
        set.insert(words.substr(0, blank));
        words.remove_prefix(blank == std::string_view::npos ? words.size() : blank + 1);
    }
    return set;
}

} // namespace

bool isStopWord(std::string_view word) {
    static const std::unordered_set<std::string_view> set = split(kWords);
    return set.contains(word);
}

bool isCalendarWord(std::string_view word) {
    static const std::unordered_set<std::string_view> set = split(kCalendar);
    return set.contains(word);
}

} // namespace vorq::gateway
