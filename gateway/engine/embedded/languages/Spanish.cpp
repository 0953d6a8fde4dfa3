#include "engine/embedded/words/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kSpanish{
    .locale = "es",
    .stemmer = "spanish",
    .stopWords =

        "a al algo algunas algunos ante antes apenas aquel aquella así aun aunque bajo bien cada "
        "casi como con contra cual cuál cuáles cuando cuándo cuanto cuánto cuánta cuántas "
        "cuántos de debe deben del desde donde dónde dos durante e el él ella ellas ellos en "
        "entre era eran es esa esas ese eso esos esta está estaba están estas este esto estos "
        "fue fueron ha había habían han hasta hay he hemos la las le les lo los me mas más mi "
        "mis mientras mismo misma mucho muy nada ni no nos nosotros nuestra nuestras nuestro "
        "nuestros o os otra otras otro otros para pero poco por porque pues que qué quien quién "
        "quiénes se sea ser será serán si sí sido sin sino sobre solo sólo somos son soy su sus "
        "también tampoco tan tanto te tiene tienen todas todo todos tras tu tus tú un una unas "
        "uno unos usted ustedes y ya yo puedo puede pueden podemos podéis podría podrían pudo "
        "debo debemos debería tengo estar quiero quiere mío mía tuyo tuya suyo suya",
    .calendar = "enero febrero marzo abril mayo junio julio agosto septiembre octubre noviembre "
                "diciembre lunes martes miércoles jueves viernes sábado domingo domingos sábados "
                "primavera verano otoño invierno",
    .determiners = "el la los las un una unos unas del al de este esta estos estas ese esa esos "
                   "esas mi mis su sus nuestro nuestra nuestros nuestras cada algún alguna ningún "
                   "ninguna",
    .prepositions = "en con sin para por sobre entre hacia",
    .paleWords =

        "tengo tenemos tienes llega llego llegan deja dejado sale salgo sabe sé veo ve doy da "
        "pone pongo creo cree quiero quiere empieza cuesta genial buenos buenas año años día "
        "días semana semanas mes meses hora horas minuto minutos vez veces cosa cosas parte "
        "ejemplo manera modo tiempo tercio mitad hecho hacer hace hizo dice dicho decir dijo "
        "tres cuatro cinco seis siete ocho nueve diez doce veinte cien mil millón hola gracias "
        "favor va van viene pasa primer primera primeras primeros último última nuevo nueva gran "
        "grande pequeño buen bueno buena mejor siempre nunca entonces ayer mañana hoy puede "
        "pueden puedo poder podrá quedan queda quedar saludo menos encima cuanto calcula don "
        "doña sr sra señor señora sola solo dentro arriba abajo antiguo antigua viejo vieja",
    .verbEndings = "mente aba aban ando iendo ar er ir aron ieron arán erán ó arse erse irse",
    .abbreviations =
        "sr sra srta dr dra d dña ud uds etc ej art núm n tel pág págs vol cap av avda "
        "ee.uu p.ej aprox máx mín ene feb abr jun jul ago sept oct nov dic",
    .pronouns = "él ella ellos ellas esto eso este esta estos estas pero y así también además "
                "entonces luego lo la su sus las los",
    .personal = "él ella ellos ellas le les lo la los las su sus se",
    .dropsSubjects = true,
    .placePrepositions = "en a de desde hasta por hacia",
    .forms = "ir va van fue fueron iba ido|ser fue era|venir viene vino vinieron venido venga "
             "vengan|tener tiene tuvo tenía tenido tenga tengan|hacer hace hizo hicieron hecho "
             "haga hagan|decir dice dijo dijeron dicho diga digan|poner pone puso pusieron puesto "
             "ponga pongan|poder puede pudo podía|querer quiere quiso quería|saber sabe supo "
             "sabía|estar estuvo estaba|dar da dio dieron dado darse darme darle|ver ve vio visto|"
             "traer trae trajo traído traiga traigan|conducir conduce condujo|pedir pide pidió|"
             "seguir sigue siguió|dormir duerme durmió|morir muere murió muerto muerte|servir "
             "sirve sirvió|sentir siente sintió|pensar piensa pensó|empezar empieza empezó|"
             "comenzar comienza comenzó comienzo|cerrar cierra cerró cierre cerrado|abrir abre "
             "abrió abierto|volver vuelve volvió vuelto vuelta|romper rompe rompió roto|escribir "
             "escribe escribió escrito|encontrar encuentra encontró|contar cuenta contó|perder "
             "pierde perdió pérdida|costar cuesta costó coste|jugar juega jugó juego|llegar llega "
             "llegó llegada|salir sale salió salida salga salgan|caer cae cayó caído caída|leer "
             "lee leyó leído|oír oye oyó|creer cree creyó|construir construye construyó "
             "construcción|elegir elige eligió elección|despedir despide despidió|devolver "
             "devuelve devolvió devuelto devolución|mover mueve movió|nacer nace nació nacimiento|"
             "comprar compra compró|pagar paga pagó pago|vender vende vendió venta|decidir decide "
             "decidió decisión|vivir vive vivió vida|enseñar enseña enseñó|robar robo robado|"
             "avisar aviso",
    .synonyms =
        "empezar comenzar iniciar|acabar terminar finalizar|comprar adquirir|costar precio "
        "cuota tarifa|recibir obtener|trabajo empleo profesión oficio|jefe director "
        "encargado|médico doctor|niño menor crío|coche auto vehículo|bici bicicleta|llamar "
        "telefonear|avisar informar comunicar|notar descubrir|grande enorme|enfadado furioso|"
        "contento feliz|triste|enfermo malo|alquilar arrendar|contrato acuerdo|cancelar "
        "anular baja|permitir autorizar|prohibir prohibido|necesitar preciso|romper dañar|"
        "reparar arreglar|bolsa mochila maleta|perro gato animal mascota|foto imagen|casa "
        "vivienda|vivir residir habitar|enviar mandar|dar entregar regalar|tienda comercio|"
        "calle vía|responder contestar|pedir solicitar|buscar|poner colocar dejar|herir daño|"
        "salvar rescatar|viaje trayecto|rápido veloz|elegir escoger|guardar conservar|"
        "reunión sesión|ocurrir pasar suceder|bajar disminuir|subir aumentar|empleado "
        "trabajador|dinero|error fallo|regalo|razón causa motivo|ayudar|hablar|queja "
        "reclamación|llevar traer|durar duración tiempo",
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
         .profession = "profesión|oficio|se dedica|a qué se dedica",
         .other = "qué|cuál|cuáles|cómo|a quiénes",
         .money = "cuesta|cuestan|costó|precio|vale|pagar|dinero|tarifa|cuota|caro|presupuesto",
         .duration = "cuánto tiempo|cuánto dura|qué edad|cuántos años",
         .length = "distancia|altura|longitud|profundidad|cuánto mide",
         .frequency = "cuántas veces|con qué frecuencia|cada cuánto"},
    .answer =
        {.person = "señor|señora|sr|sra|don|doña|doctor|doctora|director|directora|presidente|"
                   "presidenta|alcalde|alcaldesa|jefe|jefa|profesor|profesora|"
                   "investigador|investigadora|según|dijo",
         .firstPerson = "yo|me|nosotros|nos",
         .place =

             "en el|en la|en los|en las|junto a|cerca|delante|detrás|encima|por la|por el|al lado|"
             "entre|calle|plaza|sala|ciudad|edificio|hay|en un|en una|en su|en sus|en mi|dentro|"
             "fuera|debajo|enfrente|frente a|sobre la|sobre el|al fondo|arriba|abajo|en medio|"
             "bajo el|bajo la|bajo los|tras la|contra la|por el camino",
         .time = "hora|horas|hoy|mañana|ayer|tarde|noche|mediodía|siglo|desde|hasta|antes|después|"
                 "durante|cada|a las|a la una|media|alba|amanecer|anochecer|medianoche|siguiente|"
                 "temprano|pronto|madrugada",
         .reason = "porque|debido a|a causa de|gracias a|por culpa|ya que|puesto que",
         .weakReason = "pues|como|para|por eso|por lo tanto|así que|por",
         .definition =

             "es un|es una|es el|es la|significa|son|se llama|consiste|era un|era una|era el|"
             "era la|fue un|fue una|había sido|ha sido|trabajaba de|trabaja de",
         .negation = "no|nunca|jamás|ningún|ninguna|ninguno|nadie|nada|prohibido|prohibida|"
                     "prohibidos|sin|tampoco|ni",
         .permission = "permitido|permitida|prohibido|prohibida|puede|pueden|sí|no|debe|deben",
         .numbers = "dos|tres|cuatro|cinco|seis|siete|ocho|nueve|diez|once|doce|trece|catorce|"
                    "quince|veinte|treinta|cuarenta|cincuenta|cien|cientos|mil|millón|millones|"
                    "mitad|tercio|cuarto|docena|doble|gratis",
         .money = "euro|euros|€|céntimos|pesos|dólares|gratis|gratuita|gratuito|%",
         .duration = "segundo|segundos|minuto|minutos|hora|horas|día|días|semana|semanas|mes|meses|"
                     "año|años",
         .length = "metro|metros|kilómetro|kilómetros|km|cm|mm|centímetros",
         .frequency = "vez|veces|cada|todos los|todas las|diariamente"},
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
