#include "engine/embedded/words/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kEnglish{
    .locale = "en",
    .stemmer = "english",
    .stopWords =

        "a about above after again against all also am an and any are aren't as at be because "
        "been before being below between both but by can can't cannot could couldn't did didn't "
        "do does doesn't doing don't down during each either else etc even ever every few for "
        "from further get gets got had has hasn't have haven't having he he's her here hers "
        "herself him himself his how however i i'm i've i'll if in into is isn't it it's its "
        "itself just let let's may me might more most much must my myself neither no nor not now "
        "of off often on once one only onto or other others our ours out over own per rather "
        "same shall she she's should shouldn't since so some still such than that that's the "
        "their theirs them then there there's therefore these they they're this those though "
        "through thus to too toward towards under until up upon us very via was wasn't we we're "
        "were what what's when where whether which while who who's whom whose why will with "
        "within without won't would wouldn't yet you you're you'll your yours yourself",
    .calendar = "january february march april may june july august september october november "
                "december monday tuesday wednesday thursday friday saturday sunday spring summer "
                "autumn winter",
    .determiners = "the a an this these those its his her their our my your each every some "
                   "any no of for several many both",
    .prepositions = "from in by with into on at without through between under near behind beside "
                    "against during like",
    .paleWords =

        "became become becomes best better call called calls came come comes coming example find "
        "finds found gave give given gives go goes going good great half hear hold holds keep "
        "keeps kept kind last late later left less like little long look looks lot made make "
        "makes making many mean means need needed needs new next nothing old part place places "
        "please put puts quite really recently return returns run runs said saw say says second "
        "see seen shall show showed shown shows small something take taken takes tell tells "
        "thanks thing things think third took turn turns turned two three four five six seven "
        "eight nine ten twenty twelve hundred thousand use used uses usually want wants way ways "
        "went whole work works year years day days hour hours minute minutes week weeks month "
        "months time times today tomorrow yesterday morning evening night able back big bring "
        "change different early far fall falls fell feel first follow full help high know known "
        "large leave least let lets live low main may might most move moved near none often open "
        "ok okay people point rest right send sends set sets short show start started starts "
        "stay stays still stop stopped sure talk top try turn under until wait waits well will "
        "won't worth would across along already almost always anyone anything around away beside "
        "besides bigger cost costs drop drops easily enough everyone everything expected forward "
        "hence hi hello hey higher important instead known longer lower maybe mostly must never "
        "nearly nobody perhaps possible quickly read several shut simply since single smaller "
        "somebody someone sometimes soon suddenly together towards true upper went whatever "
        "whenever wrong pay pays paid happen happens depend depends allowed left beyond due "
        "percent keep overnight alone date else eleven among begins begin began ends end ended "
        "goes remain remains reach reached arose ate awoke bent bit blew bought bound bred broke "
        "brought built burned burnt caught chose clung crept drank dealt drew dreamt drove dug "
        "fed fled flew flung forgave forgot fought froze grew hid hit hung hurt knelt knew laid "
        "lay leapt learnt led lent lit lost meant met paid quit rang read rid rode rose sang "
        "sank sat sent shook shone shot shrank slept slid sold sought spent spilt split spoke "
        "sprang spread spun stank stole stood strode stuck struck stung swam swept swore swung "
        "taught thought threw told tore trod understood broken chosen driven drawn eaten fallen "
        "frozen grown hidden stolen thrown torn withdrew woke won wore wove wrote met asked "
        "answered mr mrs ms dr sir madam",
    .verbEndings = "ly ing ed n't ize ise ous ful able ible ish less",
    .abbreviations =
        "al approx art cap cf ch co corp dept dr ed eds eq est etc ex fig figs gen gov inc jr lt "
        "ltd max min mr mrs ms mt no nos op par pp prof ref rep resp rev sec sen sr st tab tel "
        "viz vol vs e.g i.e a.m p.m u.s u.k u.n ph.d jan feb mar apr jun jul aug sep sept oct nov "
        "dec cl lit ca c p",
    .pronouns = "it they this these those that he she we however but and so also thus then there "
                "therefore such his her its their otherwise instead both here",
    .personal = "he she it they him her them his hers its their theirs himself herself itself "
                "themselves",
    .placePrepositions = "in at from to near of into towards through outside",
    .forms = "be been|go goes went gone going|come came|become became|begin began begun|bite bit "
             "bitten|bleed bled blood|blow blew blown|break broke broken|bring brought|build "
             "built building|burn burnt burned|buy bought|catch caught|choose chose chosen choice|"
             "creep crept|cut cutting|deal dealt|die died dead death dying|dig dug|draw drew "
             "drawn|dream dreamt|drink drank drunk|drive drove driven|eat ate eaten|fall fell "
             "fallen|feed fed|feel felt feeling|fight fought|find found finding|flee fled|fly "
             "flew flown flight|forbid forbade forbidden|forget forgot forgotten|forgive forgave "
             "forgiven|freeze froze frozen|get got gotten getting|give gave given|grow grew grown "
             "growth|hang hung|hear heard|hide hid hidden|hold held|keep kept|know knew known "
             "knowledge|lay laid|lead led|lend lent|leave left|lie lay lain|light lit|lose lost "
             "loss|make made|mean meant|meet met|pay paid payment|read reading|ride rode ridden|"
             "ring rang rung|rise rose risen|run ran running|say said|see saw seen|seek sought|"
             "sell sold sale|send sent|sew sewn|shake shook shaken|shine shone|shoot shot|show "
             "shown|sing sang sung song|sink sank sunk|sit sat sitting|sleep slept asleep|slide "
             "slid|speak spoke spoken speech|spend spent|spread|stand stood|steal stole stolen "
             "theft thief|stick stuck|strike struck|swear swore sworn|sweep swept|swim swam swum|"
             "swing swung|take took taken|teach taught teacher|tear tore torn|tell told|think "
             "thought|throw threw thrown|understand understood|wake woke woken|wear wore worn|"
             "weave wove woven|win won winner|write wrote written|child children|foot feet|tooth "
             "teeth|man men|woman women|mouse mice|life lives live living|wife wives|knife knives|"
             "half halves|leaf leaves|shelf shelves|thief thieves|decide decision|arrive arrival|"
             "depart departure|marry marriage wedding|explain explanation|permit permission|apply "
             "application|choose selection|measure measurement|lose loss|weigh weight|long length|"
             "high height|wide width|deep depth|strong strength|hot heat|old age|young youth|poor "
             "poverty|rich wealth|able ability|safe safety|arrest arrested|breathe breath|believe "
             "belief|prove proof|advise advice|succeed success|fail failure|serve service|receive "
             "receipt|propose proposal|approve approval|refuse refusal|repay repayment|member "
             "membership|develop development|produce production product|reduce reduction|increase "
             "rise rose grow|deliver delivery|discover discovery|complain complaint|collide "
             "collision|destroy destruction",
    .synonyms =
        "start begin commence launch|end finish stop expire conclude|buy purchase acquire|"
        "cost price charge fee rate|get receive obtain|job work profession occupation "
        "employed|boss manager head director|doctor physician|kid child|car vehicle|bike "
        "bicycle|phone ring telephone call|tell inform report notify|realise realize notice "
        "discover|big large huge|small little tiny|angry cross furious mad|happy glad "
        "pleased|sad unhappy|ill sick unwell|rent let lease hire|contract agreement|cancel "
        "terminate|quit resign|allow permit|need require necessary|break damage destroy "
        "defect|fault defect|repair mend fix|bag rucksack backpack suitcase|pet dog cat "
        "animal|photo picture photograph image|house home|live reside dwell|send post ship|"
        "deliver bring|arrive reach|film movie|shop store|street road|flat apartment|answer "
        "reply respond|ask request|look search|throw toss|hurt injure wound|kill murder|save "
        "rescue|trip journey travel voyage|quick fast|choose pick select|keep store|hand "
        "give pass|meeting session|decide agree resolve|forbid ban prohibit|happen occur|"
        "drop fall decrease decline|find locate|worker employee staff|clothes clothing|money "
        "cash|error mistake fault|car automobile|present gift|mum mother|dad father|parents "
        "mother father|reason cause|help assist|set put place|open unlock|build construct "
        "erect|speak talk|own possess belong|scared afraid frightened|wrong mistake|grow "
        "increase rise|move transfer|leave depart",
    .greetings = "hi|hello|dear|hey|good morning|good afternoon|good evening|to whom",
    .closings = "best regards|kind regards|regards|best wishes|best|cheers|sincerely|yours|thanks|"
                "thank you|many thanks|love|warm regards|with kind regards|all the best|"
                "yours sincerely|yours faithfully",
    .requestWords =
        "explain tell describe show help understand please text passage selection say says said "
        "list give know read mean means note hi hello hey thank thanks okay thing things look "
        "detail details think continue more happen happens happened point points bullet bullets "
        "sentence sentences line lines fact facts idea ideas code article document email mail "
        "paragraph page section answer date dates deadline deadlines year years number numbers "
        "figure figures meant does work works",
    .definitions =
        "is a=>What is {}?|is an=>What is {}?|is the=>What is "
        "{}?|means=>What does {} mean?|refers to=>What does {} refer to?|is called=>What "
        "is {}?|is defined as=>What is {}?",
    .question =
        {.person = "who|whose|whom|which person|what person|by whom",
         .place = "where|which place|what place|which room|which city|which country|which street|"
                  "in which|from where",
         .time = "when|what time|at what time|what day|which day|what date|which date|what year|"
                 "which year|which month|how soon|since when|until when|date|dates|deadline|"
                 "deadlines",
         .quantity = "how many|how much|how long|how far|how high|how old|how fast|how big|how "
                     "large|how deep|how heavy|how often|how tall|how wide|how hot|how cold|number "
                     "of|numbers|figures|what percentage|what share|at what temperature|how "
                     "expensive|what temperature|what amount|what is the price|what was the "
                     "price|what was the balance",
         .reason = "why|for what reason|what is the reason|reason|what caused|what causes|how come",
         .definition = "what is|what's|what are|define|definition|meaning|what does it mean",
         .permission =
             "can i|can we|can you|may i|may we|am i allowed|are we allowed|is it allowed|"
             "may|can|do i have to|must i|should i|is|are|does|do|will|did|was|were",
         .profession = "for a living|profession|occupation|what job|which job|whose job|trade",
         .other = "what|which|how|tell|explain|describe",
         .money = "cost|costs|price|prices|pay|paid|charge|fee|rent|expensive|money|balance|salary|"
                  "fare|budget|worth|earn",
         .duration = "how long|how old",
         .length = "how far|how high|how deep|how tall|how wide|how long",
         .frequency = "how often|how many times"},
    .answer =
        {.person = "mr|mrs|ms|dr|professor|sir|lady|president|chair|director|head of|manager|"
                   "mayor|doctor|engineer|scientist|researcher|author|inventor|teacher|"
                   "minister|secretary|by the|"
                   "anyone who|people with|patients",
         .firstPerson = "i|i'm|i'll|i've|me|we|we'll",
         .place =

             "in the|at the|on the|at any|near|under the|behind|beside|next to|to the|into|in a|"
             "room|street|hall|floor|building|city|town|valley|station|office|corner|entrance|"
             "school|market|in an|on a|at a|in his|in her|in my|in our|on his|on her|from the|"
             "inside|outside|upstairs|downstairs|between|opposite|above|below|beneath|close to|"
             "along the|across the|against the|onto the|towards the|beyond the",
         .time = "today|tomorrow|yesterday|tonight|morning|afternoon|evening|noon|midnight|o'clock|"
                 "a.m|p.m|as soon as|once|until|after|before|during|century|every|daily|weekend|"
                 "quarter|ago|lunchtime|lunch|breakfast|dinner|supper|bedtime|dawn|dusk|sunset|"
                 "sunrise|later|soon",
         .reason = "because|due to|caused by|owing to|the reason|for this reason|on account of",
         .weakReason = "since|therefore|so that|as|in order to|thanks to|which is why|if",
         .definition =

             "is a|is an|is the|are|means|refers to|is called|is defined as|when|was a|was an|"
             "was the|were|had been a|had been the|worked as",
         .negation = "not|no|never|none|nobody|nothing|forbidden|prohibited|cannot|can't|don't|"
                     "doesn't|mustn't|won't|without|must not|refused|isn't|aren't|nor|neither",
         .permission = "allowed|not allowed|forbidden|may|can|cannot|must|must not|yes|no|"
                       "permitted|prohibited|will not|won't",
         .numbers = "one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|thirteen|"
                    "fourteen|fifteen|sixteen|twenty|thirty|forty|fifty|sixty|hundred|thousand|"
                    "million|half|third|quarter|dozen|double|twice|twentieth|tenth|free",
         .money = "£|$|€|euro|euros|pounds|pound|dollar|dollars|cent|cents|pence|free|usd|eur",
         .duration = "second|seconds|minute|minutes|hour|hours|day|days|week|weeks|month|months|"
                     "year|years|milliseconds|ms|sixteen|eighteen",
         .length = "metres|meters|metre|meter|kilometres|kilometers|km|miles|feet|inches|cm|mm",
         .frequency =
             "once|twice|times|every|daily|weekly|monthly|yearly|a day|a week|a month|a year"},
    .phrases = {.keySentences = "**Key sentences**",
                .keyTerms = "**Key terms**",
                .textSays = "The text says:",
                .foundNothing = "I found no sentence about that in the text. These say most in it:",
                .dates = "The text gives these dates:",
                .numbers = "The text gives these numbers:",
                .ownWordsNote =
                    "*These sentences are taken from the text as they stand; no language "
                    "model is connected.*",
                .deeper = "More about this, from our conversation:",
                .fromConversation = "From our conversation:",
                .lookUp = "What would you like to look up in it?",
                .about = "What does it say about “{}”?",
                .summarize = "Summarize it in three sentences",
                .conjunction = " and ",
                .separator = ", ",
                .gapQuestion = "Which word belongs in the gap?",
                .explanation = "The text says: “{}”",
                .primer =
                    "{} questions on your text. Each leaves a word out of one of its sentences; "
                    "choose the word that belongs there.",
                .toBegin = "To begin with: {}"},
};

} // namespace vorq::gateway
