#include "engine/embedded/words/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kGerman{
    .locale = "de",
    .stemmer = "german",
    .stopWords =

        "aber alle allem allen aller alles als also am an andere anderen anderer anderes auch "
        "auf aus bei beim bin bis bist da dabei dafür daher damit danach dann daran darauf darf "
        "darin darüber das dass davon dazu dein deine dem den denen denn der deren des dessen "
        "deshalb die dies diese diesem diesen dieser dieses doch dort du durch dürfen ein eine "
        "einem einen einer eines er es etwa etwas euch euer eure für gegen gewesen habe haben "
        "hast hat hatte hatten hier hin hinter ich ihm ihn ihnen ihr ihre ihrem ihren ihrer "
        "ihres im immer in indem ins ist ja jede jedem jeden jeder jedes jedoch jene jener jetzt "
        "kann kannst kein keine keinem keinen keiner können könnte man manche mehr mein meine "
        "meinem meinen meiner mich mir mit muss müssen nach nicht nichts noch nun nur ob oder "
        "ohne sehr sei sein seine seinem seinen seiner seines seit selbst sich sie sind so "
        "sobald solche soll sollen sondern sonst sowie über um und uns unser unsere unserem "
        "unseren unter viel viele vom von vor war waren warum was wegen weil welche welchem "
        "welchen welcher welches wem wen wenn wer werde werden wessen wie wieder wieviel wir "
        "wird wo wofür wohin woher worden wurde wurden während zu zum zur zwar zwischen durfte "
        "durften dürft darfst konnte konnten könnt könnten musste mussten müsst sollte sollten "
        "will wollen wollte wollten willst möchte möchten gibt meins deins seins",
    .calendar = "januar februar märz april mai juni juli august september oktober november "
                "dezember montag dienstag mittwoch donnerstag freitag samstag sonnabend sonntag "
                "frühling sommer herbst winter ostern weihnachten quartal",
    .determiners = "der die das den dem des ein eine einen einem einer eines kein keine keinen "
                   "dieser diese dieses diesen diesem jeder jede jedes mein sein ihr unser im am "
                   "zum zur vom beim ins",
    .prepositions = "mit von aus für ohne durch gegen bei nach seit unter über in an auf vor "
                    "hinter neben zwischen wegen",
    .paleWords =
        "beispiel jahr jahre jahren tag tage tagen woche wochen monat monate stunde stunden minute "
        "minuten uhr zeit mal teil art ende anfang seite drittel viertel hälfte mio mrd euro "
        "prozent "
        "herr frau herrn ersten zweiten dritten letzten nächsten neuen gut neue große "
        "zwei drei vier fünf sechs sieben acht neun zehn zwölf hundert tausend bitte danke leider "
        "kein folge leute weise fall ganze ganzen liebe hallo gleich beide genug dort dafür",
    .verbEndings = "lich isch bar",
    .abbreviations =
        "abb abs al art aufl bd bspw bzw ca d.h dr evtl etc f ff geb gen ggf hr fr hrsg inkl jh "
        "mio mrd mind max min nr o.ä pkw prof s sog st str tab tel u.a usw v vgl z.b z.t zzgl "
        "zz jan feb okt nov dez sept dipl ing bes bzgl ugs i.d.r m.e",
    .pronouns = "er sie es dies diese dieser dieses dabei dadurch damit davon daher deshalb danach "
                "außerdem auch doch aber und so dort sonst",
    .personal =
        "er sie es ihn ihm ihr ihnen sein seine seinen seinem seiner seines ihre ihren ihrem "
        "ihrer ihres deren dessen",
    .placePrepositions = "in aus nach bei von",
    .forms = "backen backt buk gebacken|beginnen begann begonnen beginn|beißen biss gebissen|"
             "bieten bot geboten|binden band gebunden|bitten bat gebeten|bleiben blieb geblieben|"
             "braten brät briet|brechen bricht brach gebrochen|brennen brannte gebrannt|bringen "
             "brachte gebracht|denken dachte gedacht|empfehlen empfiehlt empfahl empfohlen|essen "
             "isst aß gegessen|fahren fährt fuhr gefahren fahrt|fallen fällt fiel gefallen fall|"
             "fangen fängt fing gefangen|finden fand gefunden|fliegen flog geflogen flug|fließen "
             "floss geflossen|fressen frisst fraß gefressen|frieren fror gefroren|geben gibt gab "
             "gegeben|gehen geht ging gegangen|gelten gilt galt|gewinnen gewann gewonnen|gießen "
             "goss gegossen|graben gräbt grub|greifen griff gegriffen|halten hält hielt gehalten|"
             "hängen hing gehangen|heben hob gehoben|heißen hieß geheißen|helfen hilft half "
             "geholfen hilfe|kennen kannte gekannt|klingen klang geklungen|kommen kommt kam "
             "gekommen|kriechen kroch|laden lädt lud geladen|lassen lässt ließ gelassen|laufen "
             "läuft lief gelaufen|leiden litt gelitten|leihen lieh geliehen|lesen liest las "
             "gelesen|liegen lag gelegen|lügen log gelogen|messen misst maß gemessen|nehmen nimmt "
             "nahm genommen|nennen nannte genannt|raten rät riet|reißen riss gerissen|reiten ritt "
             "geritten|rennen rannte gerannt|riechen roch gerochen|rufen rief gerufen ruf|"
             "schaffen schuf geschaffen|scheinen schien|schießen schoss geschossen|schlafen "
             "schläft schlief|schlagen schlägt schlug geschlagen|schließen schloss geschlossen|"
             "schneiden schnitt geschnitten|schreiben schrieb geschrieben|schreien schrie|"
             "schweigen schwieg|schwimmen schwamm geschwommen|sehen sieht sah gesehen|singen sang "
             "gesungen|sinken sank gesunken|sitzen saß gesessen|sprechen spricht sprach "
             "gesprochen|springen sprang gesprungen|stechen sticht stach|stehen stand gestanden|"
             "stehlen stiehlt stahl gestohlen|steigen stieg gestiegen|sterben stirbt starb "
             "gestorben tod|stoßen stößt stieß|streichen strich gestrichen|streiten stritt|tragen "
             "trägt trug getragen|treffen trifft traf getroffen|treiben trieb getrieben|treten "
             "tritt trat getreten|trinken trank getrunken|tun tut tat getan|verbieten verbot "
             "verboten|vergessen vergisst vergaß|verlieren verliert verlor verloren verlust|"
             "verschwinden verschwand verschwunden|wachsen wächst wuchs gewachsen|waschen wäscht "
             "wusch|weisen wies gewiesen|werben wirbt warb|werfen wirft warf geworfen|wiegen wog "
             "gewogen|wissen weiß wusste gewusst|ziehen zog gezogen zug|kaufen kauft gekauft kauf|"
             "erben erbte erbe|wohnen wohnung wohnte|entscheiden entschied entschieden|erfinden "
             "erfand erfunden|erhalten erhielt|besitzen besaß|gründen gründung gegründet",
    .synonyms =
        "beginnen anfangen starten|enden aufhören schließen|kaufen erwerben|kosten preis "
        "gebühr beitrag|bekommen erhalten kriegen|beruf arbeit tätigkeit|arzt ärztin doktor|"
        "kind kinder|auto wagen fahrzeug|rad fahrrad|telefonieren anrufen|melden mitteilen "
        "informieren|bemerken merken entdecken|groß riesig|wütend böse verärgert|froh "
        "glücklich|traurig unglücklich|krank erkrankt|mieten vermieten pachten|vertrag "
        "vereinbarung|kündigen beenden|erlauben gestatten dürfen zulassen|brauchen benötigen|"
        "kaputt beschädigt defekt schaden|reparieren instand|tasche rucksack koffer|tier "
        "hund katze|foto bild aufnahme|haus gebäude|wohnen leben|schicken senden|ankommen "
        "eintreffen|laden geschäft|straße weg|antworten erwidern|fragen bitten|suchen|werfen "
        "schmeißen|verletzen verwunden|retten bergen|reise fahrt|schnell rasch|wählen "
        "aussuchen|aufbewahren lagern|geben überreichen|sitzung versammlung treffen|"
        "beschließen entscheiden|verbieten untersagen|passieren geschehen|sinken fallen "
        "zurückgehen|steigen zunehmen wachsen|mitarbeiter angestellte|geld bargeld|fehler "
        "irrtum|geschenk präsent|grund ursache|helfen unterstützen|reden sprechen|besitzen "
        "gehören|angst furcht|lärm geräusch krach|ausleihen leihen entleihen borgen|öffnen "
        "aufmachen|anmelden anmeldung|stehen liegen",
    .separable = "zurück|zusammen|herunter|heraus|herein|hinaus|hinein|hinter|fest|nieder|voraus|"
                 "weiter|wieder|über|unter|durch|statt|teil|ab|an|auf|aus|bei|dar|ein|fort|her|hin|"
                 "los|mit|nach|um|vor|weg|zu",
    .greetings = "hallo|liebe|lieber|sehr geehrte|sehr geehrter|guten tag|guten morgen|moin",
    .closings = "mit freundlichen grüßen|freundliche grüße|viele grüße|liebe grüße|beste grüße|"
                "herzliche grüße|mfg|gruß|danke|vielen dank|schöne grüße",
    .requestWords =
        "erkläre erklär erklären einfach bitte zeig zeige nenne nennt text abschnitt sage sagt "
        "steht "
        "stehen darin liste gib bedeutet bedeuten satz sätze sätzen punkt punkte zeile "
        "zeilen beschreibe dokument datum termin termine zahlen artikel mail seite weiter",
    .definitions = "ist ein=>Was ist {}?|ist eine=>Was ist {}?|ist der=>Was ist "
                   "{}?|bezeichnet=>Was bezeichnet {}?|bedeutet=>Was bedeutet {}?",
    .question = {.person = "wer|wessen|wem|wen|von wem|mit wem|für wen|durch wen|welche person",
                 .place = "wo|wohin|woher|von wo|an welchem ort|in welchem|in welcher|in welche|"
                          "wodurch|wo genau",
                 .time = "wann|seit wann|bis wann|ab wann|um wie viel uhr|um wieviel uhr|wie spät|"
                         "an welchem tag|in welchem jahr|welches datum|termin|termine|datum",
                 .quantity = "wie viel|wie viele|wieviel|wieviele|wie lang|wie lange|wie weit|wie "
                             "hoch|wie groß|wie teuer|wie alt|wie oft|wie schnell|wie schwer|wie "
                             "tief|wie breit|was kostet|was kosten|wie vielen|zahlen",
                 .reason = "warum|weshalb|wieso|aus welchem grund|wozu|grund",
                 .definition = "was ist|was sind|was bedeutet|was heißt",
                 .permission = "darf|dürfen|kann|können|muss|müssen|ist es erlaubt|soll|sollen|"
                               "sollte|ist|sind|hat|haben|gibt es|wird|werden",
                 .profession = "von beruf|beruflich|beruf",
                 .other = "was|welche|welcher|welches|welchen|wie|worüber|womit|woran",
                 .money = "kostet|kosten|preis|preise|zahlen|bezahlen|teuer|gebühr|miete|eintritt|"
                          "geld|beitrag|euro",
                 .duration = "wie lange|wie alt|dauert",
                 .length = "wie lang|wie weit|wie hoch|wie tief|wie breit|wie groß",
                 .frequency = "wie oft|wie häufig"},
    .answer =
        {.person = "herr|frau|dr|professor|direktor|direktorin|leiter|leiterin|bürgermeister|"
                   "oberbürgermeisterin|oberbürgermeister|chef|forscher|forscherin|präsident|"
                   "vorsitzende|vorsitzender|lehrer|lehrerin|sagte|nannte|hat",
         .firstPerson = "ich|mir|mich|wir|uns",
         .place =

             "im|in der|in die|in den|auf dem|auf den|auf der|am|an der|beim|hinter|neben|vor dem|"
             "unter|zum|ins|bei|vom|nach|straße|platz|halle|haus|raum|saal|stadt|bahnhof|in einem|"
             "in einer|in einen|in eine|auf einem|auf einer|an einem|an einer|an den|an die|"
             "auf die|vor der|vor das|hinter dem|hinter der|neben dem|zwischen|über dem|über der|"
             "unter dem|unten|oben|draußen|drinnen|gegenüber|rand|ecke|in ihrem|in seinem|"
             "in ihrer|in seiner|unter der|unter den|gegen die",
         .time =
             "uhr|heute|morgen|gestern|abend|vormittag|nachmittag|mittag|nacht|jahrhundert|sobald|"
             "bis|seit|täglich|quartal|wochenende|vor|nach|dann|morgens|mittags|abends|nachts|"
             "früh|später|bald|dämmerung|sonnenaufgang|sonnenuntergang|feierabend|mitternacht",
         .reason = "weil|wegen|aufgrund|grund|deshalb weil|infolge|dank|verursacht",
         .weakReason = "da|denn|deshalb|daher|damit|um zu|somit|sodass",
         .definition =

             "ist ein|ist eine|ist der|ist die|ist das|sind|bezeichnet|heißt|bedeutet|war ein|"
             "war eine|war der|war die|waren|arbeitete als|arbeitet als|gewesen",
         .negation = "nicht|kein|keine|keinen|keiner|keinem|keines|nie|niemals|niemand|nichts|"
                     "verboten|untersagt|ohne|weder",
         .permission = "darf|dürfen|erlaubt|verboten|kein|keine|keinen|nicht|kann|können|muss|"
                       "müssen|ja|nein|gestattet",
         .numbers = "zwei|drei|vier|fünf|sechs|sieben|acht|neun|zehn|elf|zwölf|dreizehn|vierzehn|"
                    "fünfzehn|sechzehn|zwanzig|dreißig|vierzig|fünfzig|hundert|tausend|million|"
                    "millionen|mio|halb|hälfte|drittel|viertel|dutzend|doppelt|kostenlos|frei",
         .money = "euro|€|cent|franken|dollar|kostenlos|freien|mio|frei",
         .duration = "sekunde|sekunden|minute|minuten|stunde|stunden|tag|tage|tagen|woche|wochen|"
                     "monat|monate|monaten|jahr|jahre|jahren|lang",
         .length = "meter|metern|kilometer|kilometern|km|cm|mm|zentimeter",
         .frequency = "einmal|zweimal|dreimal|viermal|fünfmal|mehrmals|mal|jeden|jede|jedes|"
                      "täglich|wöchentlich|monatlich|jährlich|alle"},
    .phrases =
        {.keySentences = "**Wichtige Sätze**",
         .keyTerms = "**Wichtige Begriffe**",
         .textSays = "Im Text steht:",
         .foundNothing = "Dazu habe ich im Text keinen Satz gefunden. Am meisten sagen diese:",
         .dates = "Der Text nennt diese Zeiten:",
         .numbers = "Der Text nennt diese Zahlen:",
         .ownWordsNote = "*Diese Sätze stehen wörtlich im Text; es ist kein Sprachmodell "
                         "verbunden.*",
         .deeper = "Mehr dazu, aus unserem Gespräch:",
         .fromConversation = "Aus unserem Gespräch:",
         .lookUp = "Was möchtest du darin nachschlagen?",
         .about = "Was steht darin über „{}“?",
         .summarize = "Fasse den Text in drei Sätzen zusammen",
         .conjunction = " und ",
         .separator = ", ",
         .gapQuestion = "Welches Wort gehört in die Lücke?",
         .explanation = "Im Text steht: „{}“",
         .primer = "{} Fragen zu deinem Text. Jede lässt in einem seiner Sätze ein Wort aus; wähle "
                   "das Wort, das dorthin gehört.",
         .toBegin = "Zum Einstieg: {}"},
};

} // namespace vorq::gateway
