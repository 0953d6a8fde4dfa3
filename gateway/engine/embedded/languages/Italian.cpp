#include "engine/embedded/words/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kItalian{
    .locale = "it",
    .stemmer = "italian",
    .stopWords =
        "a ad agli ai al alla alle allo altri altro anche ancora avere aveva c ce che chi ci come "
        "con contro cosa così cui d da dagli dai dal dalla dalle dei del della delle dello deve di "
        "dopo dove due durante e ed era erano essere fra fu già gli ha hanno ho i il in io l la le "
        "lei lo loro lui ma me mentre mi mio molto ne negli nei nel nella nelle noi non nostro o "
        "ogni per perché più po' poi può qual quale quali quando quanta quante quanti quanto "
        "quella quelle quelli quello questa queste questi questo se sei senza si sia sono sta "
        "stata stato su sua sue sugli sui sul sulla suo suoi tra tu tutti tutto un una uno vi voi",
    .calendar = "gennaio febbraio marzo aprile maggio giugno luglio agosto settembre ottobre "
                "novembre dicembre lunedì martedì mercoledì giovedì venerdì sabato domenica "
                "primavera estate autunno inverno",
    .determiners = "il lo la i gli le l un una uno del della dei delle dello al alla ai alle nel "
                   "nella di questo questa ogni suo sua",
    .prepositions = "in con senza per su tra",
    .paleWords = "anno anni giorno giorni settimana mese mesi ora ore minuto minuti volta volte "
                 "parte esempio modo tempo metà fatto fare detto dire tre quattro cinque sei sette "
                 "otto nove dieci cento mille ciao grazie nuovo nuova grande primo prima ultimo",
    .verbEndings = "mente ava avano ando endo are ere ire",
    .abbreviations = "sig sigg dott prof ing avv ecc es art n tel pag pp vol cap ca max min",
    .pronouns = "egli ella essi esso questo questa questi ma e così anche inoltre poi suo sua",
    .personal = "lui lei loro egli ella essi gli le suo sua suoi sue",
    .dropsSubjects = true,
    .placePrepositions = "a da in di verso per",
    .forms = "andare va vanno andò andato|venire viene venne venuto|avere ha ebbe aveva avuto|"
             "fare fa fece fatto|dire dice disse detto|mettere mette mise messo|prendere prende "
             "prese preso|vedere vede vide visto|sapere sa seppe|dare dà diede dato|stare sta "
             "stette|leggere legge lesse letto|scrivere scrive scrisse scritto|chiudere chiude "
             "chiuse chiuso|aprire apre aprì aperto|perdere perde perse perso|vincere vince vinse "
             "vinto|nascere nasce nacque nato|morire muore morì morto|rompere rompe ruppe rotto|"
             "chiedere chiede chiese chiesto|rispondere risponde rispose risposto|vivere vive "
             "visse vissuto|uscire esce uscì|rimanere rimane rimase|scegliere sceglie scelse "
             "scelto|decidere decise deciso",
    .synonyms =
        "cominciare iniziare|finire terminare|comprare acquistare|costare prezzo|ricevere "
        "ottenere|lavoro mestiere professione|abitare vivere|permettere autorizzare|vietare "
        "proibire|inviare mandare spedire|negozio bottega|riparare aggiustare|arrabbiato "
        "furioso|chiamare telefonare",
    .greetings = "ciao|gentile|gentili|caro|cara|cari|buongiorno|salve|egregio",
    .closings = "cordiali saluti|distinti saluti|saluti|un saluto|grazie|a presto|un abbraccio",
    .requestWords = "spiega spiegami mostra dimmi testo brano elenca frase frasi punto punti riga "
                    "documento articolo descrivi significa dice date data numeri riassumi",
    .definitions = "è un=>Che cos'è {}?|è una=>Che cos'è {}?|è il=>Che cos'è {}?|è la=>Che cos'è "
                   "{}?|significa=>Che cosa significa {}?",
    .question = {.person = "chi|di chi|a chi|con chi|da chi",
                 .place = "dove|da dove|in quale luogo|in quale città",
                 .time = "quando|da quando|fino a quando|a che ora|che ora|che giorno|in quale "
                         "anno|in che anno|date",
                 .quantity = "quanto|quanta|quanti|quante|che prezzo|che età|a quale temperatura",
                 .reason = "perché|per quale motivo|come mai|per quale ragione",
                 .definition = "che cos'è|cos'è|che cosa sono|cosa significa",
                 .permission = "posso|si può|possiamo|è permesso|è vietato|può|devo",
                 .profession = "mestiere|professione|nella vita",
                 .other = "che|che cosa|cosa|quale|quali|come",
                 .money = "costa|costano|costato|prezzo|pagare|tariffa|denaro|quota",
                 .duration = "quanto tempo|quanto dura|quanti anni",
                 .length = "distanza|altezza|lunghezza|profondità",
                 .frequency = "quante volte|con quale frequenza"},
    .answer = {.person = "signor|signora|sig|dottor|dottoressa|direttore|direttrice|presidente|"
                         "sindaco|professore|secondo|disse",
               .firstPerson = "io|mi|noi|ci",
               .place = "nel|nella|al|alla|vicino|accanto|dietro|davanti|sotto|via|piazza|sala|"
                        "città|edificio",
               .time = "ora|ore|oggi|domani|ieri|mattina|sera|mezzogiorno|secolo|dal|fino|prima|"
                       "dopo|durante|ogni|alle",
               .reason = "perché|a causa|poiché|siccome|grazie a|dovuto",
               .weakReason = "quindi|per|dato che|così",
               .definition = "è un|è una|è il|è la|significa|sono|si chiama",
               .negation = "non|mai|nessun|nessuno|nessuna|niente|nulla|vietato|vietata|proibito|"
                           "senza|né|no",
               .permission = "permesso|vietato|vietata|può|possono|sì|no|deve|devono",
               .numbers = "due|tre|quattro|cinque|sei|sette|otto|nove|dieci|undici|dodici|venti|"
                          "trenta|quaranta|cinquanta|cento|mille|mila|milione|milioni|metà|terzo|"
                          "dozzina|gratis",
               .money = "euro|€|centesimi|dollari|gratis|gratuito",
               .duration = "secondi|minuto|minuti|ora|ore|giorno|giorni|settimana|settimane|mese|"
                           "mesi|anno|anni",
               .length = "metro|metri|chilometro|chilometri|km|cm|mm",
               .frequency = "volta|volte|ogni|tutti i|tutte le"},
    .phrases = {.keySentences = "**Frasi chiave**",
                .keyTerms = "**Termini chiave**",
                .textSays = "Il testo dice:",
                .foundNothing = "Nel testo non ho trovato nessuna frase al riguardo. Queste sono "
                                "le più significative:",
                .dates = "Il testo riporta queste date:",
                .numbers = "Il testo riporta questi numeri:",
                .ownWordsNote = "*Queste frasi sono prese dal testo così come sono; nessun modello "
                                "linguistico è collegato.*",
                .deeper = "Altro su questo, dalla nostra conversazione:",
                .fromConversation = "Dalla nostra conversazione:",
                .lookUp = "Che cosa vuoi cercarvi?",
                .about = "Che cosa dice il testo su «{}»?",
                .summarize = "Riassumi il testo in tre frasi",
                .conjunction = " e ",
                .separator = ", ",
                .gapQuestion = "Quale parola manca?",
                .explanation = "Il testo dice: «{}»",
                .primer = "{} domande sul tuo testo. Ognuna omette una parola di una delle frasi; "
                          "scegli la parola che manca.",
                .toBegin = "Per cominciare: {}"},
};

} // namespace vorq::gateway
