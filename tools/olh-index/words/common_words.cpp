#include "common_words.h"

namespace olh_index {

namespace {

struct CommonWords {
  std::string_view language;
  std::string_view words;
};

// clang-format off
constexpr CommonWords kCommonWords[] = {
    {"en",
     "a about an and any are as at be because been but by can could did do does few for from get had has have he her "
     "here him his how i if in into is it its itself just may me might more most must my need needs no nor not of on "
     "or other our out over please s shall she should so some such t than that the their them then there these they "
     "this those to too under up us very want wants was we were what when where which who whom why will with would you "
     "your"},
    {"da",
     "af at da de den der deres det dig din dit efter eller en er et for fra ham han har havde hende her hun hvad hvis hvor "
     "i ikke ind jeg kan med men mig min ned nogle nu og om os over pa sa sig skal som til ud var vi vil"},
    {"de",
     "aber als am an auch auf aus bei bin bis bist da damit dann das dass dem den der des die dies diese dieser dieses doch "
     "du durch ein eine einem einen einer eines er es etwas fur haben hat ich ihm ihn ihr im in ist ja jede jeder jedes "
     "kann kein keine konnen mein mich mir mit muss nach nicht noch nur ob oder ohne sehr sein seine sich sie sind so soll "
     "uber um und uns unter vom von vor was weil wenn wer werden wie wir wird wo zu zum zur"},
    {"es",
     "a al algo como con cual cuando de del desde donde el ella ellos en entre era es esta estan este esto ha hay la las le "
     "les lo los mas me mi mientras muy ni no nos o para pero por porque que quien se ser si sin sobre su sus tambien te "
     "tiene tu un una uno y ya yo"},
    {"fi",
     "etta ei en han he ja jo joka jos kuin kun me mika mina mita mutta myos ne niin no nyt olla on ovat se sen sina tai "
     "tama te vain voi"},
    {"fr",
     "a ai au aux avec c ce ces cette comme comment d dans de des du elle elles en est et etre eux il ils j je l la le les "
     "leur leurs lui ma mais me mes moi mon n ne nos notre nous ont ou par pas pour qu quand que quel quelle qui s sa se "
     "ses si sont sur ta te tes toi ton tu un une vos votre vous y"},
    {"it",
     "a ad ai al alla alle anche che chi ci come con cosa da dal dalla dei del della delle di dove e ed era gli ha ho i il "
     "in io la le lo ma mi ne nei nel nella non o ogni per perche piu quale quando questa questo se si sono su sul sulla tra "
     "un una uno"},
    {"nl",
     "aan al als bij dan dat de der deze die dit door een en er geen had heb heeft het hij hoe ik in is ja je kan maar me "
     "met mijn moet na naar niet nog nu of om ons ook op over te tot uit van veel voor waar was wat we wel werd wie wij "
     "wordt ze zich zijn zo zou"},
    {"no",
     "alle at av da de den der deres det du eller en er et etter for fra han har hun hva hvor hvordan hvis i ikke ja jeg kan "
     "med men meg min na noe nar og om opp oss over pa sa seg skal som til ut var vi vil"},
    {"pt",
     "a ao aos as ate com como da das de do dos e ela ele em entre era essa esse esta este eu foi ha isso ja lhe mais mas me "
     "muito na nao nas nem no nos num o os ou para pela pelo por qual quando que quem se sem ser seu sua tambem te um uma"},
    {"sv",
     "alla att av blir da de dem den denna deras det detta du efter eller en er ett fran for han har hon hur i ja jag kan "
     "med men mig min nar nu och om oss over pa sa sig ska som till under upp ut var vad vi vid vill"},
};
// clang-format on

}  // namespace

std::string_view common_words_of(std::string_view language) {
  for (const CommonWords& one : kCommonWords)
    if (one.language == language) return one.words;
  return "";
}

}  // namespace olh_index
