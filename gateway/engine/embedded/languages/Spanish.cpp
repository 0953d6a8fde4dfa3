#include "engine/embedded/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kSpanish{
    .locale = "es",
    .stemmer = "spanish",
    .stopWords =
        "a al algo algunas algunos ante antes apenas aquel aquella así aun aunque bajo bien cada "
        "casi como con contra cual cuál cuáles cuando cuándo cuanto cuánto cuánta cuántas cuántos "
        "de debe deben del desde donde dónde dos durante e el él ella ellas ellos en entre era "
        "eran es esa esas ese eso esos esta está estaba están estas este esto estos fue fueron ha "
        "había habían han hasta hay he hemos la las le les lo los me mas más mi mis mientras "
        "mismo misma mucho muy nada ni no nos nosotros nuestra nuestras nuestro nuestros o os otra "
        "otras otro otros para pero poco por porque pues que qué quien quién quiénes se sea ser "
        "será serán si sí sido sin sino sobre solo sólo somos son soy su sus también tampoco tan "
        "tanto te tiene tienen todas todo todos tras tu tus tú un una unas uno unos usted ustedes "
        "y ya yo",
    .calendar = "enero febrero marzo abril mayo junio julio agosto septiembre octubre noviembre "
                "diciembre lunes martes miércoles jueves viernes sábado domingo domingos sábados "
                "primavera verano otoño invierno",
    .determiners = "el la los las un una unos unas del al de este esta estos estas ese esa esos "
                   "esas mi mis su sus nuestro nuestra nuestros nuestras cada algún alguna ningún "
                   "ninguna",
    .prepositions = "en con sin para por sobre entre hacia",
    .paleWords =
        "tengo tenemos tienes llega llego llegan deja dejado sale salgo sabe sé veo ve doy da pone "
        "pongo creo cree quiero quiere empieza cuesta genial buenos buenas año años día días "
        "semana semanas mes meses hora horas minuto minutos vez veces cosa cosas "
        "parte ejemplo manera modo tiempo tercio mitad hecho hacer hace hizo dice dicho decir dijo "
        "tres cuatro cinco seis siete ocho nueve diez doce veinte cien mil millón hola gracias "
        "favor va van viene pasa primer primera primeras primeros último última nuevo nueva gran "
        "grande pequeño buen bueno buena mejor siempre nunca entonces ayer mañana hoy puede pueden "
        "puedo poder podrá quedan queda quedar saludo menos encima cuanto calcula",
    .verbEndings = "mente aba aban ando iendo ar er ir aron ieron arán erán",
    .abbreviations =
        "sr sra srta dr dra d dña ud uds etc ej art núm n tel pág págs vol cap av avda "
        "ee.uu p.ej aprox máx mín ene feb abr jun jul ago sept oct nov dic",
    .pronouns = "él ella ellos ellas esto eso este esta estos estas pero y así también además "
                "entonces luego lo la su sus las los",
    .greetings = "hola|estimado|estimada|estimados|querido|querida|queridos|buenos días|buenas "
                 "tardes",
    .closings = "un saludo|saludos|atentamente|cordialmente|gracias|muchas gracias|un abrazo|"
                "saludos cordiales|un cordial saludo|abrazos",
    .requestWords = "explica explícame explicar muestra dame di dice texto pasaje lista frase "
                    "frases punto puntos línea líneas documento artículo describe significa "
                    "fechas fecha cifras resume ayuda entender",
    .definitions = "es un=>¿Qué es {}?|es una=>¿Qué es {}?|es el=>¿Qué es {}?|es la=>¿Qué es "
                   "{}?|significa=>¿Qué significa {}?",
    .question =
        {.person = "quién|quiénes|a quién|de quién|con quién|por quién|qué persona",
         .place = "dónde|adónde|de dónde|por dónde|en qué lugar|en qué ciudad|en qué sala|en qué "
                  "calle",
         .time =
             "cuándo|desde cuándo|hasta cuándo|a qué hora|qué hora|qué día|en qué año|qué fecha|"
             "en qué mes|fechas|fecha",
         .quantity =
             "cuánto|cuánta|cuántos|cuántas|de cuánto|a cuánto|cuanto cuesta|qué precio|qué "
             "cantidad|qué edad|qué porcentaje|cifras|a qué temperatura|qué distancia",
         .reason = "por qué|por qué razón|por qué motivo|razón|cuál es el motivo|a qué se debe",
         .definition = "qué es|qué son|qué significa",
         .permission = "puedo|se puede|podemos|está permitido|es posible|puede|hay que|debo|es|hay|"
                       "tengo que|está",
         .other = "qué|cuál|cuáles|cómo|a quiénes",
         .money = "cuesta|cuestan|costó|precio|vale|pagar|dinero|tarifa|cuota|caro|presupuesto",
         .duration = "cuánto tiempo|cuánto dura|qué edad|cuántos años",
         .length = "distancia|altura|longitud|profundidad|cuánto mide"},
    .answer =
        {.person = "señor|señora|sr|sra|don|doña|doctor|doctora|director|directora|presidente|"
                   "presidenta|alcalde|alcaldesa|jefe|jefa|profesor|profesora|"
                   "investigador|investigadora|según|dijo",
         .firstPerson = "yo|me|nosotros|nos",
         .place = "en el|en la|en los|en las|junto a|cerca|delante|detrás|encima|por la|por el|al "
                  "lado|entre|calle|plaza|sala|ciudad|edificio|hay",
         .time = "hora|horas|hoy|mañana|ayer|tarde|noche|mediodía|siglo|desde|hasta|antes|después|"
                 "durante|cada|a las|a la una|media",
         .reason = "porque|debido a|a causa de|gracias a|por culpa|ya que|puesto que",
         .weakReason = "pues|como|para|por eso|por lo tanto|así que|por",
         .definition = "es un|es una|es el|es la|significa|son|se llama|consiste",
         .negation = "no|nunca|jamás|ningún|ninguna|ninguno|nadie|nada|prohibido|prohibida|"
                     "prohibidos|sin|tampoco|ni",
         .permission = "permitido|permitida|prohibido|prohibida|puede|pueden|sí|no|debe|deben",
         .numbers = "dos|tres|cuatro|cinco|seis|siete|ocho|nueve|diez|once|doce|trece|catorce|"
                    "quince|veinte|treinta|cuarenta|cincuenta|cien|cientos|mil|millón|millones|"
                    "mitad|tercio|cuarto|docena|doble|gratis",
         .money = "euro|euros|€|céntimos|pesos|dólares|gratis|gratuita|gratuito|%",
         .duration = "segundo|segundos|minuto|minutos|hora|horas|día|días|semana|semanas|mes|meses|"
                     "año|años",
         .length = "metro|metros|kilómetro|kilómetros|km|cm|mm|centímetros"},
    .phrases = {.keySentences = "**Frases clave**",
                .keyTerms = "**Términos clave**",
                .textSays = "El texto dice:",
                .foundNothing =
                    "No encontré ninguna frase sobre eso en el texto. Estas son las que más dicen:",
                .dates = "El texto da estas fechas:",
                .numbers = "El texto da estos números:",
                .ownWordsNote =
                    "*Estas frases están tomadas del texto tal cual; no hay ningún modelo de "
                    "lenguaje conectado.*",
                .deeper = "Más sobre esto, de nuestra conversación:",
                .fromConversation = "De nuestra conversación:",
                .lookUp = "¿Qué quieres buscar en él?",
                .about = "¿Qué dice el texto sobre «{}»?",
                .summarize = "Resume el texto en tres frases",
                .conjunction = " y ",
                .separator = ", ",
                .gapQuestion = "¿Qué palabra falta en el hueco?",
                .explanation = "El texto dice: «{}»",
                .primer =
                    "{} preguntas sobre tu texto. Cada una omite una palabra de una de sus frases; "
                    "elige la palabra que falta.",
                .toBegin = "Para empezar: {}"},
};

} // namespace vorq::gateway
