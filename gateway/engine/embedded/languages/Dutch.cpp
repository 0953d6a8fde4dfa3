#include "engine/embedded/words/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kDutch{
    .locale = "nl",
    .stemmer = "dutch",
    .stopWords =
        "aan al alle als altijd ander andere bij dan dat de der deze die dit doch doen door dus "
        "een "
        "en er ge geen had hadden heb hebben heeft hem het hier hij hoe hun iets ik in is ja je "
        "jij jullie kan kon kunnen maar me meer men met mij mijn moet na naar niet niets nog nu of "
        "om omdat onder ons onze ook op over reeds te tegen toch toen tot u uit uw van veel voor "
        "waar waarom wanneer waren was wat we wel welke werd wezen wie wij wil worden wordt zal ze "
        "zelf zich zij zijn zo zonder zou",
    .calendar = "januari februari maart april mei juni juli augustus september oktober november "
                "december maandag dinsdag woensdag donderdag vrijdag zaterdag zondag",
    .determiners = "de het een deze dit die dat mijn zijn haar ons onze hun elke van",
    .prepositions = "in met zonder voor op aan bij onder naar",
    .paleWords =
        "jaar jaren dag dagen week weken maand maanden uur minuten keer deel voorbeeld tijd "
        "twee drie vier vijf zes zeven acht negen tien nieuw nieuwe grote eerste laatste "
        "gaat komt maakt zegt zei",
    .verbEndings = "lijk end",
    .abbreviations = "dhr mevr dr prof bijv bv enz nr blz ca tel max min o.a d.w.z m.b.t",
    .pronouns = "hij zij het dit deze maar en dus ook daarom toen zijn haar hun",
    .personal = "hij zij ze het hem haar hen hun zijn",
    .placePrepositions = "in uit naar bij van te",
    .forms = "gaan gaat ging gegaan|komen komt kwam gekomen|nemen neemt nam genomen|geven geeft "
             "gaf gegeven|vinden vindt vond gevonden|krijgen kreeg gekregen|blijven bleef "
             "gebleven|zien ziet zag gezien|zeggen zegt zei gezegd|doen doet deed gedaan|brengen "
             "bracht gebracht|denken dacht gedacht|kopen koopt kocht gekocht|lopen loopt liep "
             "gelopen|rijden rijdt reed gereden|schrijven schreef geschreven|spreken sprak "
             "gesproken|staan staat stond|sterven stierf gestorven|vallen viel gevallen|verliezen "
             "verloor verloren|vliegen vloog|beginnen begon begonnen|breken brak gebroken|sluiten "
             "sloot gesloten|trekken trok getrokken|weten wist|werken werkt werkte|wonen woont "
             "woonde",
    .synonyms =
        "beginnen starten|eindigen stoppen|kopen aanschaffen|kosten prijs|krijgen ontvangen|"
        "werk baan beroep|wonen leven|sturen zenden|winkel zaak|kwaad boos",
    .separable = "terug|samen|binnen|buiten|mee|weg|aan|af|bij|door|in|na|om|op|over|toe|uit|voor",
    .greetings = "hallo|beste|geachte|lieve|goedemorgen",
    .closings = "met vriendelijke groet|met vriendelijke groeten|groeten|groetjes|bedankt|mvg",
    .requestWords = "leg uit toon geef tekst zeg zegt lijst zin zinnen punt punten beschrijf",
    .definitions = "is een=>Wat is {}?|betekent=>Wat betekent {}?",
    .question = {.person = "wie|van wie|door wie|met wie",
                 .place = "waar|waarheen|waar vandaan|in welke",
                 .time = "wanneer|sinds wanneer|hoe laat|welke dag|in welk jaar|datum",
                 .quantity = "hoeveel|hoe lang|hoe ver|hoe hoog|hoe oud|hoe vaak|wat kost",
                 .reason = "waarom|om welke reden",
                 .definition = "wat is|wat zijn|wat betekent",
                 .permission = "mag|mogen|kan ik|moet",
                 .profession = "beroep|van beroep",
                 .other = "wat|welke|welk|hoe",
                 .money = "kost|kosten|prijs|betalen|geld",
                 .duration = "hoe lang|hoe oud",
                 .length = "hoe ver|hoe hoog|hoe diep",
                 .frequency = "hoe vaak|hoeveel keer"},
    .answer = {.person = "dhr|mevrouw|meneer|dr|directeur|burgemeester|voorzitter|zei|volgens",
               .firstPerson = "ik|mij|wij|we",
               .place = "in de|in het|op de|bij|naast|achter|straat|plein|zaal|stad",
               .time = "uur|vandaag|morgen|gisteren|ochtend|avond|eeuw|sinds|tot|elke",
               .reason = "omdat|wegens|vanwege|doordat",
               .weakReason = "want|dus|daarom|zodat",
               .definition = "is een|zijn|betekent|heet",
               .negation = "niet|geen|nooit|niemand|niets|verboden|zonder",
               .permission = "mag|mogen|verboden|toegestaan|kan|ja|nee|moet",
               .numbers = "twee|drie|vier|vijf|zes|zeven|acht|negen|tien|twaalf|twintig|honderd|"
                          "duizend|miljoen|helft|gratis",
               .money = "euro|€|cent|gratis",
               .duration = "seconden|minuten|uur|dagen|weken|maanden|jaar",
               .length = "meter|kilometer|km|cm|mm",
               .frequency = "keer|maal|elke|elk|dagelijks|wekelijks"},
    .phrases = {.keySentences = "**Belangrijkste zinnen**",
                .keyTerms = "**Belangrijkste begrippen**",
                .textSays = "In de tekst staat:",
                .foundNothing = "Daarover vond ik geen zin in de tekst. Deze zeggen het meest:",
                .dates = "De tekst noemt deze data:",
                .numbers = "De tekst noemt deze getallen:",
                .ownWordsNote = "*Deze zinnen staan letterlijk in de tekst; er is geen taalmodel "
                                "verbonden.*",
                .deeper = "Meer hierover, uit ons gesprek:",
                .fromConversation = "Uit ons gesprek:",
                .lookUp = "Wat wil je erin opzoeken?",
                .about = "Wat zegt de tekst over “{}”?",
                .summarize = "Vat de tekst samen in drie zinnen",
                .conjunction = " en ",
                .separator = ", ",
                .gapQuestion = "Welk woord ontbreekt?",
                .explanation = "In de tekst staat: “{}”",
                .primer =
                    "{} vragen over je tekst. Elke vraag laat een woord uit een zin weg; kies "
                    "het woord dat ontbreekt.",
                .toBegin = "Om te beginnen: {}"},
};

} // namespace vorq::gateway
